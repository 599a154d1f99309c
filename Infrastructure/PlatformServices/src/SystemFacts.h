#pragma once

#include <array>
#include <string>

/// What the operating system tells about itself and its user: the one class behind OSManagement
/// that each system has an implementation of its own of, in the folder of its name. Throws
/// std::bad_alloc alone.
class SystemFacts {
public:
    /// Major, minor and bug-fix number; what is not told is 0.
    static std::array<long, 3> version();
    /// The name of the language that the user wants to read first, "en" when he names none.
    static std::string preferredLanguage();
};
