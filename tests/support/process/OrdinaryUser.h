#pragma once

#include "ChildProcess.h"

#include <functional>

#include <grp.h>
#include <unistd.h>

constexpr uid_t NOBODY = 65534;

/// Gives up all rights of this process for good; false when it cannot.
inline bool becomeOrdinaryUser()
{
    return geteuid() != 0 ||
           (setgroups(0, nullptr) == 0 && setgid(NOBODY) == 0 && setuid(NOBODY) == 0);
}

/// Runs the action in a child process that has no rights of its own, and tells whether it returned
/// true. A test that runs as root would otherwise never meet a refusal.
inline bool asOrdinaryUser(const std::function<bool()>& action)
{
    return inChildProcess([&] { return becomeOrdinaryUser() && action(); });
}
