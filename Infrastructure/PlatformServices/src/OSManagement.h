#pragma once

#include <string>

/// The operating system's name that reports carry. Kept: the product's, on every platform.
inline constexpr const char* gsc_MacOsX = "Mac OS X";

/// Name and version of the operating system, and the language of its user interface.
///
/// No operation throws: what there is no memory for is empty. Any thread may call them.
class OSManagement {
public:
    /// Name and version, followed by a blank. Kept: the blank belongs to the text.
    static std::string getCurrentOS();
    static void getCurrentOS(std::string& name, std::string& version);
    /// Name and version, joined by "_".
    static std::string getFullOSDescription();
    /// Two letters, case as the user set it.
    static std::string getUserUILanguage();
};
