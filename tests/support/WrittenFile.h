#pragma once

#include <array>
#include <string>

#include <gtest/gtest.h>
#include <poll.h>
#include <sys/inotify.h>
#include <unistd.h>

/// Waits for a file of a folder to be closed after it was opened for writing.
class WrittenFile {
public:
    explicit WrittenFile(const std::string& folder) : m_notifier(inotify_init1(IN_CLOEXEC))
    {
        inotify_add_watch(m_notifier, folder.c_str(), IN_CLOSE_WRITE);
    }
    ~WrittenFile() { close(m_notifier); }

    WrittenFile(const WrittenFile&) = delete;
    WrittenFile& operator=(const WrittenFile&) = delete;

    /// False when none is closed for half a minute.
    bool wait() const
    {
        pollfd event{.fd = m_notifier, .events = POLLIN, .revents = 0};
        std::array<char, 4096> events{};
        return poll(&event, 1, 30000) > 0 && read(m_notifier, events.data(), events.size()) > 0;
    }

private:
    int m_notifier;
};

/// Waits until the background thread of a tracer or a logger has written all to the folder's files.
template<typename Facility>
void waitUntilWritten(Facility& facility, const WrittenFile& written)
{
    while (!facility.areAllMsgFlushed())
        ASSERT_TRUE(written.wait());
}
