#pragma once

#include "ChildProcess.h"

#include <functional>
#include <string>
#include <utility>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

/// Makes a chain of folders in the folder, each in the one before and all of the name that is
/// returned. 17 levels are more than a path can be long.
inline std::string nest(const std::string& path, int levels)
{
    const std::string name(255, 'x');
    int folder = open(path.c_str(), O_DIRECTORY | O_CLOEXEC);
    for (int level = 0; level < levels; ++level) {
        EXPECT_EQ(mkdirat(folder, name.c_str(), 0700), 0);
        const int inner = openat(folder, name.c_str(), O_DIRECTORY | O_CLOEXEC);
        close(std::exchange(folder, inner));
    }
    close(folder);
    return name;
}

/// Runs the action in a child process that can open no more than three descriptors of its own, and
/// tells whether it returned true.
inline bool withThreeDescriptors(const std::function<bool()>& action)
{
    return inChildProcess([&] {
        // Those of whoever started the test may leave gaps, which would make room for more.
        close_range(STDERR_FILENO + 1, ~0U, 0);
        const rlim_t taken = static_cast<rlim_t>(dup(STDERR_FILENO)) + 1;
        const rlimit limit{taken + 3, taken + 3};
        return setrlimit(RLIMIT_NOFILE, &limit) == 0 && action();
    });
}
