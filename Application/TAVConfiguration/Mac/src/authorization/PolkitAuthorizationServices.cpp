#include "PolkitAuthorizationServices.h"

#include "AuthorizationFailure.h"
#include "AuthorizationOutcome.h"
#include "CallMarker.h"
#include "DirectStart.h"
#include "ElevatedDisplay.h"
#include "FileSystemManagement.h"
#include "PkexecStart.h"
#include "PolkitClient.h"
#include "ProgramPath.h"

#include <algorithm>

#include <unistd.h>

namespace {

/// The action that the policy file binds to the installed tool and its marker argument.
constexpr const char* ACTION = "com.pelora.tavconfiguration.edit";
/// Not looked up in PATH, which the caller chooses.
constexpr const char* PKEXEC = "/usr/bin/pkexec";

bool isRoot()
{
    return geteuid() == 0;
}

bool areKnown(const AuthorizationRights& rights)
{
    return std::ranges::all_of(
        rights, [](const AuthorizationRight& right) { return right.name == ADMINISTRATOR_RIGHT; });
}

std::unique_ptr<const StartMethod> startMethod()
{
    CallMarker marker("startMethod");
    if (isRoot())
        return std::make_unique<DirectStart>();
    return std::make_unique<PkexecStart>(PKEXEC);
}

AuthorizationStatus cannotGetRights(AuthorizationStatus status, const std::string& reason)
{
    CallMarker marker("cannotGetRights");
    return AuthorizationFailure::tell(status, "get administrator rights", reason);
}

/// The reason is empty where the user knows it.
AuthorizationOutcome outcomeOf(const PolkitClient::Answer& answer)
{
    switch (answer.verdict) {
    case PolkitClient::Verdict::granted:
        return {AuthorizationStatus::success};
    case PolkitClient::Verdict::dismissed:
        return {AuthorizationStatus::canceled};
    case PolkitClient::Verdict::refused:
        return {AuthorizationStatus::denied, "the request was refused"};
    case PolkitClient::Verdict::nobodyToAsk:
        return {
            AuthorizationStatus::interactionNotAllowed,
            "a password is needed, but no authentication agent runs in this session"};
    case PolkitClient::Verdict::unavailable:
        break;
    }
    return {
        AuthorizationStatus::internal,
        "the authorization service (polkit) cannot be used: " + answer.reason};
}

} // namespace

PolkitAuthorizationServices::PolkitAuthorizationServices() : m_launcher(startMethod())
{
    CallMarker marker(
        "PolkitAuthorizationServices", "PolkitAuthorizationServices::constructor", true, this);
}

PolkitAuthorizationServices::~PolkitAuthorizationServices()
{
    CallMarker marker(
        "PolkitAuthorizationServices", "PolkitAuthorizationServices::destructor", false, this);
}

AuthorizationStatus PolkitAuthorizationServices::AuthorizationCreate(
    const AuthorizationRights* rights, std::uint32_t /*flags*/,
    std::unique_ptr<Authorization>* authorization)
{
    CallMarker marker("PolkitAuthorizationServices::AuthorizationCreate", this);
    if (rights != nullptr && !(isRoot() && areKnown(*rights)))
        return AuthorizationStatus::denied;
    if (authorization != nullptr)
        *authorization = std::make_unique<Authorization>();
    return AuthorizationStatus::success;
}

AuthorizationStatus PolkitAuthorizationServices::AuthorizationCopyRights(
    Authorization& authorization, const AuthorizationRights& rights, std::uint32_t flags)
{
    CallMarker marker("PolkitAuthorizationServices::AuthorizationCopyRights", this);
    if (!areKnown(rights))
        return AuthorizationStatus::denied;
    if (isRoot())
        return AuthorizationStatus::success;
    if (const std::string obstacle = ElevatedDisplay::obstacle(); !obstacle.empty())
        return cannotGetRights(AuthorizationStatus::interactionNotAllowed, obstacle);

    const bool mayAskUser = (flags & AuthorizationFlag::INTERACTION_ALLOWED) != 0;
    const PolkitClient::Answer answer = PolkitClient::check(ACTION, mayAskUser);
    authorization.keptGrant = answer.grant;
    const auto [status, reason] = outcomeOf(answer);
    return reason.empty() ? status : cannotGetRights(status, reason);
}

AuthorizationStatus PolkitAuthorizationServices::AuthorizationExecuteWithPrivileges(
    Authorization& /*authorization*/, const char* toolPath, std::uint32_t /*flags*/,
    const char* const* arguments, std::FILE** communicationsPipe)
{
    CallMarker marker("PolkitAuthorizationServices::AuthorizationExecuteWithPrivileges", this);
    // Whoever started root's process chose the tool path and PATH; the executable is what it is.
    const std::string program = isRoot() ? FileSystemManagement::getCurrentExecutableFullPath()
                                         : ProgramPath::resolve(toolPath);
    return m_launcher.launch(program, arguments, communicationsPipe);
}

AuthorizationStatus PolkitAuthorizationServices::AuthorizationFree(
    std::unique_ptr<Authorization> authorization, std::uint32_t /*flags*/)
{
    CallMarker marker("PolkitAuthorizationServices::AuthorizationFree", this);
    if (authorization->keptGrant.empty() || PolkitClient::revoke(authorization->keptGrant))
        return AuthorizationStatus::success;
    return AuthorizationStatus::internal;
}
