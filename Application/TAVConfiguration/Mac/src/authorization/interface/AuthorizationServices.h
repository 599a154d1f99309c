#pragma once

#include <cstdint>
#include <cstdio>
#include <memory>
#include <string>
#include <vector>

/// What an authorization operation answers; 0 is success, the numbers are those that traces show.
enum class AuthorizationStatus : int {
    success = 0,
    denied = -60005,                ///< asked, and refused
    canceled = -60006,              ///< the user dismissed the prompt
    interactionNotAllowed = -60007, ///< nobody can be asked, or the window could not appear
    internal = -60008,              ///< the authorization service cannot be used
    toolExecuteFailure = -60031,    ///< the right was granted, but the program did not start
};

namespace AuthorizationFlag {
inline constexpr std::uint32_t DEFAULTS = 0;
/// The user may be asked.
inline constexpr std::uint32_t INTERACTION_ALLOWED = 0x1;
/// Rights that the process does not hold yet are asked for.
inline constexpr std::uint32_t EXTEND_RIGHTS = 0x2;
/// The grant is kept for the relaunch that follows.
inline constexpr std::uint32_t PREAUTHORIZE = 0x10;
} // namespace AuthorizationFlag

/// The one right that the start-up asks for.
inline constexpr const char* ADMINISTRATOR_RIGHT = "system.privilege.admin";

/// One right that is asked about; it carries no value.
struct AuthorizationRight {
    std::string name;
    std::uint32_t flags = AuthorizationFlag::DEFAULTS;
};

using AuthorizationRights = std::vector<AuthorizationRight>;

/// The reference that ties asking, relaunching and freeing together; its owner frees it.
struct Authorization {
    /// How the service names the grant that it keeps; empty when it keeps none.
    std::string keptGrant;
};

/// The four operations of the system's authorization service that the start-up needs. No operation
/// takes an environment, none hands rights back.
///
/// Used from the main thread only; a failure is a status, nothing is thrown. What the user has to
/// know about a failure is printed on standard error by the implementation.
class AuthorizationServices {
public:
    virtual ~AuthorizationServices() = default;

    /// With rights: whether the process holds them already, without asking anybody. With
    /// `authorization` not null: also makes a reference for the other operations.
    virtual AuthorizationStatus AuthorizationCreate(
        const AuthorizationRights* rights, std::uint32_t flags,
        std::unique_ptr<Authorization>* authorization) = 0;

    /// Asks for the rights, the user included when the flags allow it.
    virtual AuthorizationStatus AuthorizationCopyRights(
        Authorization& authorization, const AuthorizationRights& rights, std::uint32_t flags) = 0;

    /// Starts `toolPath` with the granted rights and `arguments` (ended by a null entry); returns
    /// when the program has begun or has failed to. On success `communicationsPipe` is the
    /// program's output and the caller closes it; on a failure it is null.
    virtual AuthorizationStatus AuthorizationExecuteWithPrivileges(
        Authorization& authorization, const char* toolPath, std::uint32_t flags,
        const char* const* arguments, std::FILE** communicationsPipe) = 0;

    /// Ends the reference and the grant that it kept.
    virtual AuthorizationStatus AuthorizationFree(
        std::unique_ptr<Authorization> authorization, std::uint32_t flags) = 0;
};
