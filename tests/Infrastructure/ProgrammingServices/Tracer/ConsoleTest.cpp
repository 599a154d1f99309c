#include "Console.h"

#include "PipedStream.h"

#include <csignal>
#include <functional>
#include <string>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <unistd.h>

namespace {

bool isBrokenPipePending()
{
    sigset_t pending{};
    sigpending(&pending);
    return sigismember(&pending, SIGPIPE) == 1;
}

bool isBrokenPipeBlocked()
{
    sigset_t mask{};
    pthread_sigmask(SIG_BLOCK, nullptr, &mask);
    return sigismember(&mask, SIGPIPE) == 1;
}

void blockBrokenPipe(int how)
{
    sigset_t set{};
    sigemptyset(&set);
    sigaddset(&set, SIGPIPE);
    pthread_sigmask(how, &set, nullptr);
}

/// What the stream's reader does while a writer waits for room.
std::function<void()> readWhenFull;

} // namespace

extern "C" {
// NOLINTBEGIN(bugprone-reserved-identifier): the names that the linker's --wrap gives
int __real_poll(pollfd* streams, nfds_t count, int timeout);

int __wrap_poll(pollfd* streams, nfds_t count, int timeout)
{
    if (readWhenFull)
        readWhenFull();
    return __real_poll(streams, count, timeout);
}
// NOLINTEND(bugprone-reserved-identifier)
}

TEST(Console, WritesALineToTheStandardOutputAtOnce)
{
    const PipedStream output(STDOUT_FILENO);

    Console::writeLine("text");

    EXPECT_EQ(output.read(), "text\n");
}

TEST(Console, WritesAnErrorToTheStandardErrorAsItIs)
{
    const PipedStream error(STDERR_FILENO);

    Console::writeError("text\n");

    EXPECT_EQ(error.read(), "text\n");
}

TEST(Console, SurvivesAnOutputThatNobodyReads)
{
    PipedStream output(STDOUT_FILENO);
    output.closeReader();

    Console::writeLine("dropped");

    EXPECT_FALSE(isBrokenPipePending());
    EXPECT_FALSE(isBrokenPipeBlocked());
}

TEST(Console, SurvivesAnErrorStreamThatNobodyReads)
{
    PipedStream error(STDERR_FILENO);
    error.closeReader();

    Console::writeError("dropped");

    EXPECT_FALSE(isBrokenPipePending());
    EXPECT_FALSE(isBrokenPipeBlocked());
}

TEST(Console, WaitsForTheReaderOfAStreamThatDoesNotWaitItself)
{
    const PipedStream output(STDOUT_FILENO);
    fcntl(STDOUT_FILENO, F_SETFL, O_NONBLOCK);
    const int capacity = fcntl(STDOUT_FILENO, F_GETPIPE_SZ);
    ASSERT_GT(capacity, 0);
    const std::string text(3 * static_cast<std::size_t>(capacity), 'x');
    std::string received;
    readWhenFull = [&] { received += output.read(); };

    Console::writeLine(text);

    readWhenFull = nullptr;
    received += output.read();
    EXPECT_TRUE(received == text + "\n") << received.size() << " bytes";
}

TEST(Console, DropsWhatNobodyReads)
{
    PipedStream output(STDOUT_FILENO);
    output.closeReader();
    Console::writeLine("dropped");
    const PipedStream next(STDOUT_FILENO);

    Console::writeLine("kept");

    EXPECT_EQ(next.read(), "kept\n");
}

TEST(Console, LeavesABrokenPipeSignalThatWasPendingBefore)
{
    PipedStream output(STDOUT_FILENO);
    output.closeReader();
    blockBrokenPipe(SIG_BLOCK);
    pthread_kill(pthread_self(), SIGPIPE);

    Console::writeLine("dropped");

    EXPECT_TRUE(isBrokenPipePending());
    EXPECT_TRUE(isBrokenPipeBlocked());
    std::signal(SIGPIPE, SIG_IGN);
    blockBrokenPipe(SIG_UNBLOCK);
    std::signal(SIGPIPE, SIG_DFL);
}

TEST(Console, SurvivesAClosedStream)
{
    const int saved = dup(STDOUT_FILENO);
    close(STDOUT_FILENO);

    Console::writeLine("dropped");

    dup2(saved, STDOUT_FILENO);
    close(saved);
    EXPECT_FALSE(isBrokenPipePending());
}
