#pragma once

#include <string>

/// Paths of the executable and of the data folders; creation, copying and deletion of files and
/// folders.
///
/// Paths use "/". No operation throws: a failure is false or an empty string. Any thread may call
/// them, but those that make folders set the file mode mask of the whole process to 0 and leave it
/// so: a file that others must not write gets its mode explicitly.
class FileSystemManagement {
public:
    static char getFolderSeparator() { return '/'; }

    /// Absolute, symbolic links resolved.
    static std::string getCurrentExecutableFullPath();
    static std::string getCurrentExecutableName();
    /// With its separator at the end.
    static std::string getCurrentExecutableDirectory();
    /// The executable's directory.
    static std::string getCurrentOutputDirectory();

    /// At most 2048 bytes long, empty otherwise; without a separator at the end, like the next.
    static std::string getUserAppDataDirectory();
    /// The data folder of all users. An absolute TAV_COMMON_DATA_DIR replaces it for tests and
    /// trials, except in a process that runs with more rights than the one that started it.
    static std::string getCommonAppDataDirectory();
    static std::string getUserDesktopFolder();

    /// Whether anything stands under the path: a folder or a dangling link counts too.
    static bool existFile(const std::string& path);
    /// Links are followed.
    static bool existFolder(const std::string& path);

    /// Creates the folder and all missing parents, open to everybody. Kept: fails where another
    /// process makes one of them at the same moment.
    static bool createFolder(const std::string& path);
    /// Makes the folder and all missing parents, each that is new with exactly this mode. One that
    /// another process makes at the same moment is there after all, and so no failure.
    static bool makeFolder(const std::string& path, unsigned int mode);
    /// Creates the folder too. An existing file keeps its content.
    static bool createFile(const std::string& folder, const std::string& name);

    /// Copies one regular file. The destination is emptied first, whether there is a source or not.
    static bool Copy(const std::string& source, const std::string& destination);
    /// Copies the files of a folder tree whose names hold the fixed part of the pattern: the
    /// pattern without its first "*.*", or else without its first "*". Links are followed; what is
    /// neither file nor folder is left out.
    ///
    /// Ends with false where there is no folder, one cannot be made, or an entry leads nowhere.
    /// Kept: true although a file could not be copied, or the copying ended in a sub-folder.
    static bool copyFolder(
        const std::string& source, const std::string& destination, const std::string& pattern);

    /// Returns true when the removal FAILED. Kept: callers rely on the inverted result.
    static bool deleteFile(const std::string& path);
    static bool DeleteEmptyFolder(const std::string& path);
    /// Empties the folder; links are removed, not followed, and what cannot be removed is passed
    /// over. Returns with `removeSelf` whether the folder itself is gone, else whether there was
    /// anything in it.
    static bool deleteFolder(const std::string& path, bool removeSelf);

    /// Does nothing. Kept: false on this platform.
    static bool RemoveReadOnly(const std::string& path);
    /// Does nothing. Kept: true on this platform.
    static bool Move(const std::string& source, const std::string& destination);
    /// Does nothing. Kept: empty on this platform, the default is not returned.
    static std::string ReadParamFromIniFile(
        const std::string& file, const std::string& section, const std::string& key,
        const std::string& defaultValue);
};
