#include "Console.h"

#include "PipedStream.h"

#include <cerrno>
#include <csignal>
#include <ctime>
#include <functional>
#include <optional>
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

/// How often a signal interrupts the next waits, and how long the last one was to be at most.
int interruptions = 0;
int askedTimeout = 0;

/// How long a broken pipe was waited for.
std::optional<std::timespec> askedWait;

volatile std::sig_atomic_t delivered = 0;

} // namespace

extern "C" {
// NOLINTBEGIN(bugprone-reserved-identifier): the names that the linker's --wrap gives
int __real_poll(pollfd* streams, nfds_t count, int timeout);

int __wrap_poll(pollfd* streams, nfds_t count, int timeout)
{
    askedTimeout = timeout;
    if (interruptions > 0) {
        --interruptions;
        errno = EINTR;
        return -1;
    }
    if (readWhenFull)
        readWhenFull();
    return __real_poll(streams, count, timeout);
}

int __real_sigtimedwait(const sigset_t* set, siginfo_t* info, const std::timespec* timeout);

int __wrap_sigtimedwait(const sigset_t* set, siginfo_t* info, const std::timespec* timeout)
{
    askedWait.reset();
    if (timeout != nullptr)
        askedWait = *timeout;
    return __real_sigtimedwait(set, info, timeout);
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

TEST(Console, WaitsForTheReaderAsLongAsItTakesThoughSignalsInterruptIt)
{
    const PipedStream output(STDOUT_FILENO);
    fcntl(STDOUT_FILENO, F_SETFL, O_NONBLOCK);
    const int capacity = fcntl(STDOUT_FILENO, F_GETPIPE_SZ);
    ASSERT_GT(capacity, 0);
    const std::string text(static_cast<std::size_t>(capacity), 'x');
    std::string received;
    readWhenFull = [&] { received += output.read(); };
    interruptions = 3;

    Console::writeLine(text);

    readWhenFull = nullptr;
    received += output.read();
    EXPECT_TRUE(received == text + "\n") << received.size() << " bytes";
    EXPECT_EQ(interruptions, 0);
    EXPECT_EQ(askedTimeout, -1);
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

TEST(Console, TakesABrokenPipeSignalBackWithoutWaitingForIt)
{
    const PipedStream output(STDOUT_FILENO);

    Console::writeLine("text");

    ASSERT_TRUE(askedWait.has_value());
    EXPECT_EQ(askedWait->tv_sec, 0);
    EXPECT_EQ(askedWait->tv_nsec, 0);
}

TEST(Console, LeavesOtherSignalsBlocked)
{
    const PipedStream output(STDOUT_FILENO);
    sigset_t other{};
    sigemptyset(&other);
    sigaddset(&other, SIGUSR2);
    pthread_sigmask(SIG_BLOCK, &other, nullptr);
    std::signal(SIGUSR2, [](int) { delivered = 1; });
    raise(SIGUSR2);

    Console::writeLine("text");

    EXPECT_EQ(delivered, 0);
    pthread_sigmask(SIG_UNBLOCK, &other, nullptr);
    std::signal(SIGUSR2, SIG_DFL);
    EXPECT_EQ(delivered, 1) << "when it is no longer blocked";
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
