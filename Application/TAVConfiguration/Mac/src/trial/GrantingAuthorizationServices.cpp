#include "GrantingAuthorizationServices.h"

#include "CallMarker.h"
#include "DirectStart.h"
#include "ProgramPath.h"

GrantingAuthorizationServices::GrantingAuthorizationServices()
    : m_launcher(std::make_unique<DirectStart>())
{
    CallMarker marker(
        "GrantingAuthorizationServices", "GrantingAuthorizationServices::constructor", true, this);
}

GrantingAuthorizationServices::~GrantingAuthorizationServices()
{
    CallMarker marker(
        "GrantingAuthorizationServices", "GrantingAuthorizationServices::destructor", false, this);
}

AuthorizationStatus GrantingAuthorizationServices::AuthorizationCreate(
    const AuthorizationRights* /*rights*/, std::uint32_t /*flags*/,
    std::unique_ptr<Authorization>* authorization)
{
    CallMarker marker("GrantingAuthorizationServices::AuthorizationCreate", this);
    if (authorization != nullptr)
        *authorization = std::make_unique<Authorization>();
    return AuthorizationStatus::success;
}

AuthorizationStatus GrantingAuthorizationServices::AuthorizationCopyRights(
    Authorization& /*authorization*/, const AuthorizationRights& /*rights*/,
    std::uint32_t /*flags*/)
{
    CallMarker marker("GrantingAuthorizationServices::AuthorizationCopyRights", this);
    return AuthorizationStatus::success;
}

AuthorizationStatus GrantingAuthorizationServices::AuthorizationExecuteWithPrivileges(
    Authorization& /*authorization*/, const char* toolPath, std::uint32_t /*flags*/,
    const char* const* arguments, std::FILE** communicationsPipe)
{
    CallMarker marker("GrantingAuthorizationServices::AuthorizationExecuteWithPrivileges", this);
    return m_launcher.launch(ProgramPath::resolve(toolPath), arguments, communicationsPipe);
}

AuthorizationStatus GrantingAuthorizationServices::AuthorizationFree(
    std::unique_ptr<Authorization> /*authorization*/, std::uint32_t /*flags*/)
{
    CallMarker marker("GrantingAuthorizationServices::AuthorizationFree", this);
    return AuthorizationStatus::success;
}
