#include "Console.h"

#include <cerrno>
#include <csignal>
#include <ctime>
#include <string>

#include <unistd.h>

namespace {

/// Keeps the SIGPIPE of a write on this thread from being delivered, and leaves none pending.
class BrokenPipeGuard {
public:
    BrokenPipeGuard()
    {
        sigemptyset(&m_brokenPipe);
        sigaddset(&m_brokenPipe, SIGPIPE);
        sigset_t pending{};
        sigpending(&pending);
        m_wasPending = sigismember(&pending, SIGPIPE) == 1;
        pthread_sigmask(SIG_BLOCK, &m_brokenPipe, &m_mask);
    }
    ~BrokenPipeGuard()
    {
        const std::timespec atOnce{};
        if (!m_wasPending)
            sigtimedwait(&m_brokenPipe, nullptr, &atOnce);
        pthread_sigmask(SIG_SETMASK, &m_mask, nullptr);
    }

    BrokenPipeGuard(const BrokenPipeGuard&) = delete;
    BrokenPipeGuard& operator=(const BrokenPipeGuard&) = delete;

private:
    sigset_t m_brokenPipe{};
    sigset_t m_mask{};
    bool m_wasPending = false;
};

void write(int descriptor, std::string_view text)
{
    const BrokenPipeGuard guard;
    while (!text.empty()) {
        const ssize_t written = ::write(descriptor, text.data(), text.size());
        if (written < 0 && errno != EINTR)
            return;
        if (written > 0)
            text.remove_prefix(static_cast<std::size_t>(written));
    }
}

} // namespace

void Console::writeLine(std::string_view text)
{
    // One write, so that lines of several threads or processes do not mix.
    write(STDOUT_FILENO, std::string(text) + '\n');
}

void Console::writeError(std::string_view text)
{
    write(STDERR_FILENO, text);
}
