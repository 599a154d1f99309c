#pragma once

#include "ChildProcess.h"

#include <functional>

#include <grp.h>
#include <unistd.h>

/// Runs the action in a child process that has no rights of its own, and tells whether it returned
/// true. A test that runs as root would otherwise never meet a refusal.
inline bool asOrdinaryUser(const std::function<bool()>& action)
{
    return inChildProcess([&] {
        constexpr uid_t nobody = 65534;
        const bool dropped = geteuid() != 0 || (setgroups(0, nullptr) == 0 && setgid(nobody) == 0 &&
                                                setuid(nobody) == 0);
        return dropped && action();
    });
}
