#include "FileSystemManagement.h"

#include "Folder.h"
#include "FolderTree.h"
#include "RegularFile.h"
#include "SystemFolders.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <exception>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr mode_t FOLDER_MODE = S_IRWXU | S_IRWXG | S_IRWXO;
constexpr mode_t FILE_MODE = S_IRUSR | S_IWUSR | S_IRGRP | S_IROTH;

std::string dataFolder(const std::string& path)
{
    constexpr std::size_t longestPath = 2048;
    return path.size() <= longestPath ? path : std::string();
}

// "*.*" goes whole; of "*.txt" only the star goes, so that ".txt" is left.
std::string fixedPart(std::string pattern)
{
    if (const std::size_t any = pattern.find("*.*"); any != std::string::npos)
        return pattern.erase(any, 3);
    std::size_t star = pattern.find("*.");
    if (star == std::string::npos)
        star = pattern.find('*');
    return star == std::string::npos ? pattern : pattern.erase(star, 1);
}

// Has the folder of the path made, and before it each one above it, until that fails.
template<typename Make>
bool makeEachFolder(const std::string& path, const Make& make)
{
    if (path.empty())
        return false;
    umask(0); // Kept: folders are open to everybody, and the mask stays so
    for (std::size_t end = 1; end <= path.size(); ++end) {
        if (end < path.size() && path[end] != '/')
            continue;
        if (!make(path.substr(0, end)))
            return false;
    }
    return true;
}

void removeEntry(FolderTree& tree)
{
    struct stat status {};
    const char* const name = tree.name().c_str();
    if (fstatat(tree.folder(), name, &status, AT_SYMLINK_NOFOLLOW) != 0)
        return;
    if (S_ISREG(status.st_mode) || S_ISLNK(status.st_mode))
        unlinkat(tree.folder(), name, 0);
    else if (S_ISDIR(status.st_mode) && !tree.enter())
        unlinkat(tree.folder(), name, AT_REMOVEDIR);
}

// Passes over what cannot be removed; tells whether there was anything in the folder.
bool emptyFolder(const std::string& path)
{
    FolderTree tree(path);
    bool hadEntries = false;
    while (true) {
        if (tree.next()) {
            hadEntries = true;
            removeEntry(tree);
        } else if (tree.leave()) {
            unlinkat(tree.folder(), tree.name().c_str(), AT_REMOVEDIR);
        } else {
            return hadEntries;
        }
    }
}

// Kept: the fixed part may stand anywhere in the name, and nobody asks whether a file, or what is
// in a folder, could be copied.
bool copyEntry(
    const std::string& source, const std::string& destination, const std::string& name,
    const std::string& fixed)
{
    const std::string from = source + "/" + name;
    const std::string to = destination + "/" + name;
    struct stat status {};
    if (stat(from.c_str(), &status) != 0)
        return false;
    if (S_ISDIR(status.st_mode)) {
        if (mkdir(to.c_str(), FOLDER_MODE) != 0 && errno != EEXIST)
            return false;
        FileSystemManagement::copyFolder(from, to, fixed);
    } else if (S_ISREG(status.st_mode) && name.find(fixed) != std::string::npos) {
        FileSystemManagement::Copy(from, to);
    }
    return true;
}

} // namespace

std::string FileSystemManagement::getCurrentExecutableFullPath()
try {
    return SystemFolders::executable();
} catch (const std::exception&) {
    return {};
}

std::string FileSystemManagement::getCurrentExecutableName()
try {
    const std::string path = getCurrentExecutableFullPath();
    return path.substr(path.rfind('/') + 1);
} catch (const std::exception&) {
    return {};
}

std::string FileSystemManagement::getCurrentExecutableDirectory()
try {
    const std::string path = getCurrentExecutableFullPath();
    return path.substr(0, path.rfind('/') + 1);
} catch (const std::exception&) {
    return {};
}

std::string FileSystemManagement::getCurrentOutputDirectory()
{
    return getCurrentExecutableDirectory();
}

std::string FileSystemManagement::getUserAppDataDirectory()
try {
    return dataFolder(SystemFolders::userData());
} catch (const std::exception&) {
    return {};
}

std::string FileSystemManagement::getCommonAppDataDirectory()
try {
    return dataFolder(SystemFolders::commonData());
} catch (const std::exception&) {
    return {};
}

std::string FileSystemManagement::getUserDesktopFolder()
try {
    return SystemFolders::desktop();
} catch (const std::exception&) {
    return {};
}

bool FileSystemManagement::existFile(const std::string& path)
{
    struct stat status {};
    return lstat(path.c_str(), &status) == 0;
}

bool FileSystemManagement::existFolder(const std::string& path)
{
    struct stat status {};
    return stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

bool FileSystemManagement::createFolder(const std::string& path)
try {
    return makeEachFolder(path, [](const std::string& folder) {
        return existFolder(folder) || mkdir(folder.c_str(), FOLDER_MODE) == 0;
    });
} catch (const std::exception&) {
    return false;
}

bool FileSystemManagement::makeFolder(const std::string& path, unsigned int mode)
try {
    return makeEachFolder(path, [mode](const std::string& folder) {
        return mkdir(folder.c_str(), mode) == 0 || existFolder(folder);
    });
} catch (const std::exception&) {
    return false;
}

bool FileSystemManagement::createFile(const std::string& folder, const std::string& name)
try {
    if (!createFolder(folder))
        return false;
    const bool separated = folder.ends_with('/') || folder.ends_with('\\');
    const std::string path = folder + (separated ? "" : "/") + name;
    const RegularFile created(AT_FDCWD, path, O_WRONLY | O_APPEND | O_CREAT, FILE_MODE);
    return true;
} catch (const std::exception&) {
    return false;
}

bool FileSystemManagement::Copy(const std::string& source, const std::string& destination)
try {
    if (source.empty())
        return false;
    const RegularFile target(AT_FDCWD, destination, O_WRONLY | O_CREAT | O_TRUNC, FILE_MODE);
    const RegularFile origin(AT_FDCWD, source, O_RDONLY);
    target.write(origin.readAll());
    return true;
} catch (const std::exception&) {
    return false;
}

bool FileSystemManagement::copyFolder(
    const std::string& source, const std::string& destination, const std::string& pattern)
try {
    umask(0); // Kept: as in createFolder()
    const std::string fixed = fixedPart(pattern);
    if (!existFolder(source) || !createFolder(destination))
        return false;
    const auto names = Folder(AT_FDCWD, source).names();
    return names && std::all_of(names->begin(), names->end(), [&](const std::string& name) {
               return copyEntry(source, destination, name, fixed);
           });
} catch (const std::exception&) {
    return false;
}

bool FileSystemManagement::deleteFile(const std::string& path)
{
    return std::remove(path.c_str()) != 0;
}

bool FileSystemManagement::DeleteEmptyFolder(const std::string& path)
{
    return rmdir(path.c_str()) == 0;
}

bool FileSystemManagement::deleteFolder(const std::string& path, bool removeSelf)
try {
    const bool hadEntries = emptyFolder(path);
    return removeSelf ? rmdir(path.c_str()) == 0 : hadEntries;
} catch (const std::exception&) {
    return false;
}

bool FileSystemManagement::RemoveReadOnly(const std::string& /*path*/)
{
    return false;
}

bool FileSystemManagement::Move(const std::string& /*source*/, const std::string& /*destination*/)
{
    return true;
}

std::string FileSystemManagement::ReadParamFromIniFile(
    const std::string& /*file*/, const std::string& /*section*/, const std::string& /*key*/,
    const std::string& /*defaultValue*/)
{
    return {};
}
