#pragma once

#include <string>

/// Where the program lies that a process was started by.
class ProgramPath {
public:
    /// The absolute path, symbolic links resolved, of what the first argument names: a path, or a
    /// bare name that is looked up in PATH as a shell does it. An argument that names no program
    /// gives the running executable.
    static std::string resolve(const std::string& firstArgument);
};
