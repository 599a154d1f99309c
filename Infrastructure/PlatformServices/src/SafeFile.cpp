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

std::optional<RegularFile> openIfThere(int folder, const std::string& name)
try {
    return RegularFile(folder, name, O_RDONLY | O_NOFOLLOW);
} catch (const std::system_error& error) {
    if (error.code() == std::errc::no_such_file_or_directory)
        return std::nullopt;
    throw;
}

// What another process is half through with writing in place must neither be changed nor kept.
std::optional<RegularFile> openForChange(int folder, const std::string& name)
{
    std::optional<RegularFile> file = openIfThere(folder, name);
    if (file && !file->tryLock(RegularFile::Lock::shared))
        throw std::runtime_error("reading the file: Another process writes it");
    return file;
}

std::optional<Version> readVersion(int folder, const std::string& name)
{
    const std::optional<RegularFile> file = openForChange(folder, name);
    if (!file)
        return std::nullopt;
    return Version{file->readAll(), file->status()};
}

void syncFolder(int folder)
{
    // EINVAL: this file system keeps folders without being asked, and cannot be asked. No error
    // with a code: it must not be taken for a refusal, since the file was replaced already.
    if (fsync(folder) == -1 && errno != EINVAL)
        throw std::runtime_error("syncing the folder: " + std::generic_category().message(errno));
}

std::runtime_error cannotPutBack(const std::system_error& error)
{
    return std::runtime_error("putting back the old content: " + error.code().message());
}

void putBack(int folder, const std::string& name, const std::optional<Version>& old)
try {
    if (old)
        TemporaryFile(folder, old->content, &old->status).renameTo(name);
    else
        checked(unlinkat(folder, name.c_str(), 0), "removing the file");
} catch (const std::system_error& error) {
    throw cannotPutBack(error);
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
    } catch (const std::runtime_error&) {
        putBack(folder, name, old);
        throw;
    }
}

void putBackInPlace(const RegularFile& file, std::string_view old)
try {
    file.overwrite(old);
} catch (const std::system_error& error) {
    throw cannotPutBack(error);
}

// A second name of the file could be a file of somebody else's, put there to be overwritten. Two
// that write at once would leave parts of both. What is put back is read under the lock: the file
// may have another content than before.
void overwriteInPlace(int folder, const std::string& name, std::string_view content)
{
    const RegularFile file(folder, name, O_RDWR | O_NOFOLLOW);
    if (file.status().st_nlink != 1)
        throw std::runtime_error("writing the file in place: It has other names");
    if (!file.tryLock(RegularFile::Lock::exclusive))
        throw std::runtime_error("writing the file in place: Another process uses it");
    const std::string old = file.readAll();
    try {
        file.overwrite(content);
    } catch (const std::system_error&) {
        putBackInPlace(file, old);
        throw;
    }
}

bool isRefusal(const std::error_code& error)
{
    return error == std::errc::permission_denied || error == std::errc::operation_not_permitted ||
           error == std::errc::read_only_file_system;
}

} // namespace

std::optional<std::string> SafeFile::read(const std::string& path, Links links, std::size_t longest)
try {
    const int flags = links == Links::refuse ? O_NOFOLLOW : 0;
    return RegularFile(AT_FDCWD, path, O_RDONLY | flags).readAll(longest);
} catch (const std::exception&) {
    return std::nullopt;
}

std::string SafeFile::readForChange(const std::string& path, std::string& content)
try {
    const std::optional<RegularFile> file = openForChange(AT_FDCWD, path);
    content = file ? file->readAll() : std::string();
    return {};
} catch (const std::exception& error) {
    return error.what();
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
        overwriteInPlace(place, entry, content);
    }
    return {};
} catch (const std::exception& error) {
    return error.what();
}
