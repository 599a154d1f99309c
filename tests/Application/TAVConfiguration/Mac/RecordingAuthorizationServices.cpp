#include "RecordingAuthorizationServices.h"

#include "CallMarker.h"
#include "Pipe.h"

#include <fcntl.h>

namespace {

std::string textOf(const AuthorizationRights& rights)
{
    std::string text = "{";
    for (const AuthorizationRight& right : rights)
        text += right.name + ":" + std::to_string(right.flags);
    return text + "}";
}

std::string textOf(const char* const* arguments)
{
    std::string text = "[";
    for (; *arguments != nullptr; ++arguments)
        text += std::string("'") + *arguments + "'";
    return text + "]";
}

} // namespace

RecordingAuthorizationServices::RecordingAuthorizationServices(Recorder recorder)
    : m_record(std::move(recorder))
{
    CallMarker marker(
        "RecordingAuthorizationServices", "RecordingAuthorizationServices::constructor", true,
        this);
}

RecordingAuthorizationServices::~RecordingAuthorizationServices()
{
    CallMarker marker(
        "RecordingAuthorizationServices", "RecordingAuthorizationServices::destructor", false,
        this);
}

AuthorizationStatus RecordingAuthorizationServices::AuthorizationCreate(
    const AuthorizationRights* rights, std::uint32_t flags,
    std::unique_ptr<Authorization>* authorization)
{
    m_record(
        "AuthorizationCreate rights " + (rights != nullptr ? textOf(*rights) : "none") + " flags " +
        std::to_string(flags) + " reference " +
        (authorization != nullptr ? "wanted" : "not wanted"));
    if (createStatus == AuthorizationStatus::success && authorization != nullptr) {
        *authorization = std::make_unique<Authorization>();
        m_handedOut = authorization->get();
    }
    return createStatus;
}

AuthorizationStatus RecordingAuthorizationServices::AuthorizationCopyRights(
    Authorization& authorization, const AuthorizationRights& rights, std::uint32_t flags)
{
    m_record(
        "AuthorizationCopyRights " + nameOf(&authorization) + " rights " + textOf(rights) +
        " flags " + std::to_string(flags));
    return copyRightsStatus;
}

AuthorizationStatus RecordingAuthorizationServices::AuthorizationExecuteWithPrivileges(
    Authorization& authorization, const char* toolPath, std::uint32_t flags,
    const char* const* arguments, std::FILE** communicationsPipe)
{
    m_record(
        "AuthorizationExecuteWithPrivileges " + nameOf(&authorization) + " '" + toolPath +
        "' flags " + std::to_string(flags) + " arguments " + textOf(arguments));
    if (executeStatus == AuthorizationStatus::success) {
        Pipe pipe;
        pipe.open();
        m_pipe = pipe.readEnd.release();
        *communicationsPipe = fdopen(m_pipe, "r");
    }
    return executeStatus;
}

AuthorizationStatus RecordingAuthorizationServices::AuthorizationFree(
    std::unique_ptr<Authorization> authorization, std::uint32_t flags)
{
    m_record(
        "AuthorizationFree " + nameOf(authorization.get()) + " flags " + std::to_string(flags));
    if (m_pipe >= 0)
        m_record(fcntl(m_pipe, F_GETFD) < 0 ? "the pipe is closed" : "the pipe is open");
    return AuthorizationStatus::success;
}

std::string RecordingAuthorizationServices::nameOf(const Authorization* authorization) const
{
    return authorization == m_handedOut ? "the reference" : "another reference";
}
