#pragma once

#include "ChildProcess.h"

#include <csignal>
#include <functional>

#include <sys/resource.h>

/// Runs the action in a child process whose files cannot grow beyond `bytes`, as on a disk that is
/// full by then, and tells whether it returned true.
inline bool onFullDisk(rlim_t bytes, const std::function<bool()>& action)
{
    return inChildProcess([&] {
        const rlimit limit{bytes, bytes};
        std::signal(SIGXFSZ, SIG_IGN);
        return setrlimit(RLIMIT_FSIZE, &limit) == 0 && action();
    });
}
