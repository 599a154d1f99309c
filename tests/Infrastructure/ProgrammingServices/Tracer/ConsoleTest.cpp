#include "Console.h"

#include <array>
#include <csignal>
#include <string>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

namespace {

/// A pipe in the place of a standard stream; the stream is put back at the end of the scope.
class PipedStream {
public:
    explicit PipedStream(int stream) : m_stream(stream), m_saved(dup(stream))
    {
        if (pipe(m_ends.data()) == 0)
            dup2(m_ends[1], stream);
        close(m_ends[1]);
    }
    ~PipedStream()
    {
        dup2(m_saved, m_stream);
        close(m_saved);
        close(m_ends[0]);
    }

    PipedStream(const PipedStream&) = delete;
    PipedStream& operator=(const PipedStream&) = delete;

    /// From here on nobody reads.
    void closeReader()
    {
        close(m_ends[0]);
        m_ends[0] = -1;
    }

    std::string read() const
    {
        std::array<char, 256> text{};
        const ssize_t count = ::read(m_ends[0], text.data(), text.size());
        return {text.data(), static_cast<std::size_t>(count)};
    }

private:
    int m_stream;
    int m_saved;
    std::array<int, 2> m_ends{};
};

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

} // namespace

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
