#include "SafeFile.h"

#include "Folder.h"
#include "RegularFile.h"
#include "SystemCall.h"
#include "TemporaryFile.h"

#include <cerrno>
#include <exception>
#include <stdexcept>
#include <system_error>

#include <unistd.h>

namespace {

// What a failing replacement puts back.
struct Version {
    std::string content;
    struct stat status;
};

std::optional<Version> readVersion(int folder, const std::string& name)
try {
    const RegularFile file(folder, name, O_RDONLY | O_NOFOLLOW);
    return Version{file.readAll(), file.status()};
} catch (const std::system_error& error) {
    if (error.code() == std::errc::no_such_file_or_directory)
        return std::nullopt;
    throw;
}

void syncFolder(int folder)
{
    // EINVAL: this file system keeps folders without being asked, and cannot be asked.
    if (fsync(folder) == -1 && errno != EINVAL)
        throw std::system_error(errno, std::generic_category(), "syncing the folder");
}

void putBack(int folder, const std::string& name, const std::optional<Version>& old)
try {
    if (old)
        TemporaryFile(folder, old->content, &old->status).renameTo(name);
    else
        checked(unlinkat(folder, name.c_str(), 0), "removing the file");
} catch (const std::system_error& error) {
    throw std::runtime_error("putting back the old content: " + error.code().message());
}

// Both temporary files stand complete before the first rename, so that a full disk costs neither
// the file nor its backup.
void replaceByRename(
    int folder, const std::string& name, std::string_view content,
    const std::optional<Version>& old, SafeFile::Backup backup)
{
    TemporaryFile fresh(folder, content, old ? &old->status : nullptr);
    if (old && backup == SafeFile::Backup::keep)
        TemporaryFile(folder, old->content, &old->status).renameTo(name + ".bak");
    fresh.renameTo(name);
    try {
        syncFolder(folder);
    } catch (const std::system_error&) {
        putBack(folder, name, old);
        throw;
    }
}

// A second name of the file could be a file of somebody else's, put there to be overwritten.
void overwriteInPlace(
    int folder, const std::string& name, std::string_view content, const Version& old)
{
    const RegularFile file(folder, name, O_WRONLY | O_NOFOLLOW);
    if (file.status().st_nlink != 1)
        throw std::runtime_error("writing the file in place: It has other names");
    try {
        file.overwrite(content);
    } catch (const std::system_error&) {
        file.overwrite(old.content);
        throw;
    }
}

bool isRefusal(const std::error_code& error)
{
    return error == std::errc::permission_denied || error == std::errc::operation_not_permitted ||
           error == std::errc::read_only_file_system;
}

} // namespace

std::optional<std::string> SafeFile::read(const std::string& path, Links links)
try {
    const int flags = links == Links::refuse ? O_NOFOLLOW : 0;
    return RegularFile(AT_FDCWD, path, O_RDONLY | flags).readAll();
} catch (const std::exception&) {
    return std::nullopt;
}

std::string SafeFile::replace(const std::string& path, std::string_view content, Backup backup)
try {
    const std::size_t cut = path.rfind('/') + 1; // 0 without a folder
    const std::string name = path.substr(cut);
    const Folder folder(AT_FDCWD, cut == 0 ? "." : path.substr(0, cut));

    // A folder that cannot be listed may still hold a file that can be written.
    const int place = folder.isOpen() ? folder.descriptor() : AT_FDCWD;
    const std::string& entry = folder.isOpen() ? name : path;
    const std::optional<Version> old = readVersion(place, entry);
    try {
        if (!folder.isOpen())
            throw std::system_error(folder.error(), "opening the folder");
        replaceByRename(place, name, content, old, backup);
    } catch (const std::system_error& error) {
        if (!old || !isRefusal(error.code()))
            throw;
        overwriteInPlace(place, entry, content, *old);
    }
    return {};
} catch (const std::exception& error) {
    return error.what();
}
