#pragma once

#include <cstdlib>
#include <functional>

#include <grp.h>
#include <sys/wait.h>
#include <unistd.h>

/// Runs the action in a child process that has no rights of its own, and tells whether it returned
/// true. A test that runs as root would otherwise never meet a refusal.
inline bool asOrdinaryUser(const std::function<bool()>& action)
{
    constexpr uid_t nobody = 65534;
    const pid_t child = fork();
    if (child == 0) {
        const bool dropped = geteuid() != 0 || (setgroups(0, nullptr) == 0 && setgid(nobody) == 0 &&
                                                setuid(nobody) == 0);
        _exit(dropped && action() ? EXIT_SUCCESS : EXIT_FAILURE);
    }
    int status = 0;
    return waitpid(child, &status, 0) == child && WIFEXITED(status) &&
           WEXITSTATUS(status) == EXIT_SUCCESS;
}
