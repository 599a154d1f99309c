#pragma once

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <functional>

#include <sys/wait.h>
#include <unistd.h>

/// Whether the action returns true, instead of failing with an exception, which it tells.
inline bool succeeds(const std::function<bool()>& action)
{
    try {
        return action();
    } catch (const std::exception& exception) {
        std::fprintf(stderr, "%s\n", exception.what());
    } catch (...) {
        std::fputs("an exception of no known type\n", stderr);
    }
    return false;
}

/// The child's status for true: a crash report ends a process with 0.
constexpr int CHILD_SUCCEEDED = 42;

/// Runs the action in a child process, where it may give up rights or set limits, and tells whether
/// it returned true.
inline bool inChildProcess(const std::function<bool()>& action)
{
    const pid_t child = fork();
    // No exception may leave the child: it would go on with the tests that follow.
    if (child == 0)
        _exit(succeeds(action) ? CHILD_SUCCEEDED : EXIT_FAILURE);
    int status = 0;
    return waitpid(child, &status, 0) == child && WIFEXITED(status) &&
           WEXITSTATUS(status) == CHILD_SUCCEEDED;
}
