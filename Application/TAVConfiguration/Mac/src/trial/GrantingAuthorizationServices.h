#pragma once

#include "AuthorizationServices.h"
#include "PrivilegedLauncher.h"

/// Grants everything and elevates nothing: the relaunched program runs with the user's own rights.
/// For trials on private data; never part of what is installed.
class GrantingAuthorizationServices : public AuthorizationServices {
public:
    GrantingAuthorizationServices();
    ~GrantingAuthorizationServices() override;

    GrantingAuthorizationServices(const GrantingAuthorizationServices&) = delete;
    GrantingAuthorizationServices& operator=(const GrantingAuthorizationServices&) = delete;

    AuthorizationStatus AuthorizationCreate(
        const AuthorizationRights* rights, std::uint32_t flags,
        std::unique_ptr<Authorization>* authorization) override;
    AuthorizationStatus AuthorizationCopyRights(
        Authorization& authorization, const AuthorizationRights& rights,
        std::uint32_t flags) override;
    AuthorizationStatus AuthorizationExecuteWithPrivileges(
        Authorization& authorization, const char* toolPath, std::uint32_t flags,
        const char* const* arguments, std::FILE** communicationsPipe) override;
    AuthorizationStatus AuthorizationFree(
        std::unique_ptr<Authorization> authorization, std::uint32_t flags) override;

private:
    PrivilegedLauncher m_launcher;
};
