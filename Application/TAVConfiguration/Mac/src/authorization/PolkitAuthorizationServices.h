#pragma once

#include "AuthorizationServices.h"
#include "PrivilegedLauncher.h"

/// The authorization operations on polkit: the administrator right is the tool's own action.
///
/// The process holds the right exactly when its effective user is root: a grant that polkit keeps
/// for an ordinary process would let it write nothing. Root is never asked and needs no polkit.
/// What an ordinary user has to know of a failure goes to standard error; a prompt that the user
/// dismissed stays silent.
class PolkitAuthorizationServices : public AuthorizationServices {
public:
    PolkitAuthorizationServices();
    ~PolkitAuthorizationServices() override;

    PolkitAuthorizationServices(const PolkitAuthorizationServices&) = delete;
    PolkitAuthorizationServices& operator=(const PolkitAuthorizationServices&) = delete;

    AuthorizationStatus AuthorizationCreate(
        const AuthorizationRights* rights, std::uint32_t flags,
        std::unique_ptr<Authorization>* authorization) override;
    /// A session in which an elevated window could not appear is told so before anybody is asked.
    AuthorizationStatus AuthorizationCopyRights(
        Authorization& authorization, const AuthorizationRights& rights,
        std::uint32_t flags) override;
    /// Ordinary users go through pkexec. Root starts the running executable directly, whatever the
    /// tool path says.
    AuthorizationStatus AuthorizationExecuteWithPrivileges(
        Authorization& authorization, const char* toolPath, std::uint32_t flags,
        const char* const* arguments, std::FILE** communicationsPipe) override;
    AuthorizationStatus AuthorizationFree(
        std::unique_ptr<Authorization> authorization, std::uint32_t flags) override;

private:
    PrivilegedLauncher m_launcher;
};
