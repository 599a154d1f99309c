#pragma once

#include <cstddef>
#include <filesystem>
#include <iterator>

/// How many threads this process has; compare two counts, since a sanitizer may run one of its own.
inline std::ptrdiff_t threadsOfTheProcess()
{
    const std::filesystem::directory_iterator tasks("/proc/self/task");
    return std::distance(begin(tasks), end(tasks));
}
