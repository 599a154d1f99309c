#pragma once

#include <csignal>
#include <cstdlib>
#include <functional>

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

/// Runs the action in a child process whose files cannot grow beyond `bytes`, as on a disk that is
/// full by then, and tells whether it returned true.
inline bool onFullDisk(rlim_t bytes, const std::function<bool()>& action)
{
    const pid_t child = fork();
    if (child == 0) {
        const rlimit limit{bytes, bytes};
        std::signal(SIGXFSZ, SIG_IGN);
        const bool limited = setrlimit(RLIMIT_FSIZE, &limit) == 0;
        _exit(limited && action() ? EXIT_SUCCESS : EXIT_FAILURE);
    }
    int status = 0;
    return waitpid(child, &status, 0) == child && WIFEXITED(status) &&
           WEXITSTATUS(status) == EXIT_SUCCESS;
}
