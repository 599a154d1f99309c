#pragma once

#include <string>
#include <string_view>

#include <sys/stat.h>

/// A complete file, synced, under a name in an open folder that nobody can foresee; one rename puts
/// it in the place of another. What was not renamed is removed at the end of the scope.
///
/// The folder stays the caller's and outlives the object. Every operation throws std::system_error
/// with the step and the system's reason.
class TemporaryFile {
public:
    /// Takes mode and owner of `model`, the file that it is to replace; without one the mode is
    /// 0644 and the owner the process's.
    TemporaryFile(int folder, std::string_view content, const struct stat* model);
    ~TemporaryFile();

    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    /// Takes the place of `name` in the same folder; a link of that name is replaced, not followed.
    void renameTo(const std::string& name);

private:
    explicit TemporaryFile(int folder);

    int m_folder;
    std::string m_name;
};
