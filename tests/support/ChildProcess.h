#pragma once

#include <cstdlib>
#include <functional>

#include <sys/wait.h>
#include <unistd.h>

/// Runs the action in a child process, where it may give up rights or set limits, and tells whether
/// it returned true.
inline bool inChildProcess(const std::function<bool()>& action)
{
    const pid_t child = fork();
    if (child == 0)
        _exit(action() ? EXIT_SUCCESS : EXIT_FAILURE);
    int status = 0;
    return waitpid(child, &status, 0) == child && WIFEXITED(status) &&
           WEXITSTATUS(status) == EXIT_SUCCESS;
}
