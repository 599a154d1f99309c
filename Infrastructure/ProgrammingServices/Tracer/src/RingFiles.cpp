#include "RingFiles.h"

#include "FileDescriptor.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <ctime>
#include <optional>

#include <fcntl.h>
#include <sys/stat.h>

namespace {

struct Modification {
    long date; ///< year, month and day as the decimal digits YYYYMMDD
    long time; ///< hour, minute and second as the decimal digits HHMMSS
};

std::optional<Modification> modificationOf(const std::string& path)
{
    struct stat status {};
    if (stat(path.c_str(), &status) != 0)
        return std::nullopt;
    std::tm local{};
    localtime_r(&status.st_mtime, &local);
    return Modification{
        (local.tm_year + 1900L) * 10000 + (local.tm_mon + 1) * 100L + local.tm_mday,
        local.tm_hour * 10000L + local.tm_min * 100L + local.tm_sec};
}

/// The file's folder, held open: what is found out about it holds for what is looked at in it.
FileDescriptor folderOf(const std::string& path)
{
    const std::string folder = path.substr(0, path.rfind('/') + 1);
    return FileDescriptor(
        ::open(folder.empty() ? "." : folder.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
}

/// Whether nobody else can have given the opened file its second name: it is one's own, in one's
/// own folder, which others may not change.
bool isNamedByOneself(const struct stat& file, const std::string& path)
{
    constexpr mode_t othersMayWrite = S_IWGRP | S_IWOTH;
    const FileDescriptor opened = folderOf(path);
    const char* const name = path.c_str() + (path.rfind('/') + 1);
    struct stat folder {};
    struct stat named {};
    return file.st_uid == geteuid() && fstat(opened.get(), &folder) == 0 &&
           folder.st_uid == geteuid() && (folder.st_mode & othersMayWrite) == 0 &&
           fstatat(opened.get(), name, &named, AT_SYMLINK_NOFOLLOW) == 0 &&
           named.st_dev == file.st_dev && named.st_ino == file.st_ino;
}

// O_NONBLOCK, so that a FIFO is opened or refused at once; it changes nothing on a regular file.
RingFiles::File openRegular(const std::string& path, int flags, const char* streamMode)
{
    constexpr mode_t newFileMode = 0644;
    FileDescriptor descriptor(
        ::open(path.c_str(), flags | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY, newFileMode));
    struct stat status {};
    if (!descriptor.isOpen() || fstat(descriptor.get(), &status) != 0 || !S_ISREG(status.st_mode) ||
        (status.st_nlink > 1 && !isNamedByOneself(status, path)))
        return nullptr;
    RingFiles::File file(fdopen(descriptor.get(), streamMode));
    if (file)
        descriptor.release();
    return file;
}

} // namespace

std::string RingFiles::name(const std::string& base, long index)
{
    return base + "_" + std::to_string(index) + ".txt";
}

long RingFiles::findLastUsed(const std::string& base, long maxFiles)
{
    Modification previous{};
    long index = 0;
    for (; index <= maxFiles; ++index) {
        const auto modification = modificationOf(name(base, index));
        if (!modification || modification->date < previous.date ||
            modification->time < previous.time)
            break;
        previous = *modification;
    }
    return index - 1;
}

RingFiles::File RingFiles::open(const std::string& path, Mode mode)
{
    if (mode == Mode::append)
        return openRegular(path, O_WRONLY | O_CREAT | O_APPEND, "a");
    // Emptied once it is known what was opened, not by the opening.
    File file = openRegular(path, O_RDWR | O_CREAT, "w+");
    if (file && ftruncate(fileno(file.get()), 0) != 0)
        return nullptr;
    return file;
}

long RingFiles::countLines(const std::string& path)
{
    const File file = openRegular(path, O_RDONLY, "r");
    if (!file)
        return 0;
    std::ptrdiff_t lines = 0;
    char last = '\n';
    std::array<char, 65536> block{};
    while (const std::size_t length = std::fread(block.data(), 1, block.size(), file.get())) {
        const auto* const end = block.begin() + length;
        lines += std::count(block.cbegin(), end, '\n');
        last = *(end - 1);
    }
    return last == '\n' ? lines : lines + 1;
}
