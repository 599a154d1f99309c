#include "RegularFile.h"

#include "SystemCall.h"

#include <algorithm>
#include <array>
#include <stdexcept>

#include <fcntl.h>
#include <unistd.h>

namespace {

// What open(2) answers for a link that is not to be followed, a folder, and a FIFO without a reader
// or a socket.
bool isOtherKind(int error, int flags)
{
    return (error == ELOOP && (flags & O_NOFOLLOW) != 0) || error == EISDIR || error == ENXIO;
}

// O_NONBLOCK keeps a FIFO from waiting for its other end, O_NOCTTY a terminal from being taken.
int openWithoutWaiting(int folder, const std::string& path, int flags, mode_t mode)
{
    constexpr int always = O_NONBLOCK | O_NOCTTY | O_CLOEXEC;
    const int descriptor = openat(folder, path.c_str(), flags | always, mode);
    if (descriptor == -1 && isOtherKind(errno, flags))
        throw std::runtime_error("opening the file: Not a regular file");
    return checked(descriptor, (flags & O_CREAT) != 0 ? "creating the file" : "opening the file");
}

} // namespace

RegularFile::RegularFile(int folder, const std::string& path, int flags, mode_t mode)
    : m_descriptor(openWithoutWaiting(folder, path, flags, mode))
{
    if (!S_ISREG(status().st_mode))
        throw std::runtime_error("opening the file: Not a regular file");
}

struct stat RegularFile::status() const
{
    struct stat status {};
    checked(fstat(m_descriptor.get(), &status), "looking at the file");
    return status;
}

std::string RegularFile::readAll(std::size_t longest) const
{
    std::string content;
    content.reserve(std::min(static_cast<std::size_t>(status().st_size), longest));
    std::array<char, 65536> piece; // NOLINT(cppcoreguidelines-pro-type-member-init): read into
    while (true) {
        const ssize_t count =
            checked(read(m_descriptor.get(), piece.data(), piece.size()), "reading the file");
        if (count == 0)
            return content;
        const auto size = static_cast<std::size_t>(count);
        if (size > longest - content.size())
            throw std::runtime_error("reading the file: It is too long");
        content.append(piece.data(), size);
    }
}

void RegularFile::write(std::string_view content) const
{
    while (!content.empty()) {
        const ssize_t count = checked(
            ::write(m_descriptor.get(), content.data(), content.size()), "writing the file");
        content.remove_prefix(static_cast<std::size_t>(count));
    }
}

void RegularFile::overwrite(std::string_view content) const
{
    checked(lseek(m_descriptor.get(), 0, SEEK_SET), "going to the start of the file");
    write(content);
    checked(ftruncate(m_descriptor.get(), static_cast<off_t>(content.size())), "cutting the file");
    sync();
}

bool RegularFile::tryLock(Lock lock) const
{
    // The opening's own lock: a process's is gone once it closes any other opening of the file.
    struct flock whole {};
    whole.l_type = lock == Lock::shared ? F_RDLCK : F_WRLCK;
    const int result = fcntl(m_descriptor.get(), F_OFD_SETLK, &whole);
    // Any other failure: this file system has no locks.
    return result == 0 || (errno != EACCES && errno != EAGAIN);
}

void RegularFile::setOwner(uid_t user, gid_t group) const
{
    checked(fchown(m_descriptor.get(), user, group), "giving the file its owner");
}

void RegularFile::setMode(mode_t mode) const
{
    checked(fchmod(m_descriptor.get(), mode), "giving the file its mode");
}

void RegularFile::sync() const
{
    checked(fsync(m_descriptor.get()), "syncing the file");
}
