#pragma once

#include <filesystem>
#include <string>
#include <system_error>

/// Paths of the executable and of the data folders; creation, copying and deletion of files and
/// folders.
///
/// Paths use "/". No operation throws: a failure is false or an empty string.
class FileSystemManagement {
public:
    static char getFolderSeparator() { return '/'; }
    /// The folder of the running executable, with its trailing separator.
    static std::string getCurrentOutputDirectory()
    {
        std::error_code error;
        const std::string path = std::filesystem::read_symlink("/proc/self/exe", error).string();
        return path.substr(0, path.rfind('/') + 1);
    }
};
