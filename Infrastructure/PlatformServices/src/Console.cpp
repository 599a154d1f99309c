#include "Console.h"

#include "BrokenPipeGuard.h"

#include <cerrno>
#include <string>

#include <poll.h>
#include <unistd.h>

namespace {

// Waits for room where the stream's other users have made it one that does not wait.
bool mayGoOn(int descriptor)
{
    if (errno != EAGAIN)
        return errno == EINTR;
    pollfd stream{.fd = descriptor, .events = POLLOUT, .revents = 0};
    return poll(&stream, 1, -1) > 0 || errno == EINTR;
}

void write(int descriptor, std::string_view text)
{
    const BrokenPipeGuard guard;
    while (!text.empty()) {
        const ssize_t written = ::write(descriptor, text.data(), text.size());
        if (written > 0)
            text.remove_prefix(static_cast<std::size_t>(written));
        else if (written == 0 || !mayGoOn(descriptor))
            return;
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
