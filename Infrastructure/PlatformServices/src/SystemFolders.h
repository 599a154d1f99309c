#pragma once

#include <string>

/// Where the operating system keeps things: the one class behind FileSystemManagement that each
/// system has an implementation of its own of, in the folder of its name.
///
/// Paths have no separator at their end. What cannot be told is an empty string. Throws
/// std::bad_alloc alone.
class SystemFolders {
public:
    /// The running executable, links resolved.
    static std::string executable();
    static std::string userData();
    static std::string commonData();
    static std::string desktop();
};
