#pragma once

#include "FileDescriptor.h"

#include <cstddef>
#include <string>
#include <string_view>

#include <sys/stat.h>

/// An open regular file. A folder, a FIFO, a socket or a device is refused, and none of them makes
/// the opening wait.
///
/// Every operation throws on failure: std::system_error with the step and the system's reason, or
/// std::runtime_error for what is not a regular file. Not shared between threads.
class RegularFile {
public:
    /// Shared among those that read, exclusive for the one that writes.
    enum class Lock { shared, exclusive };

    /// Opens `path`, taken relative to the open folder `folder` (AT_FDCWD: the current one), with
    /// the flags of open(2); `mode` is that of a file which O_CREAT makes. With O_NOFOLLOW a
    /// symbolic link is no regular file either.
    RegularFile(int folder, const std::string& path, int flags, mode_t mode = 0);

    struct stat status() const;

    /// From the current position to the end. More than `longest` bytes are a failure.
    std::string readAll(std::size_t longest = std::string::npos) const;
    /// At the current position.
    void write(std::string_view content) const;
    /// Makes `content` the whole content, without ever cutting the file before it is written.
    void overwrite(std::string_view content) const;
    /// Keeps other openings of the file from a lock until it is closed here: a shared lock from an
    /// exclusive one, an exclusive lock from any. False when one of them has it; never waits.
    bool tryLock(Lock lock) const;
    void setOwner(uid_t user, gid_t group) const;
    /// The mode as it is given, whatever the process's file mode mask.
    void setMode(mode_t mode) const;
    /// Returns once the content is on the disk.
    void sync() const;

private:
    FileDescriptor m_descriptor;
};
