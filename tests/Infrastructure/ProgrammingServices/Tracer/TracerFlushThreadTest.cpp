#include "TracerFlushThread.h"

#include "PublishedTracer.h"

#include <array>
#include <chrono>
#include <cstddef>
#include <filesystem>
#include <iterator>
#include <string>

#include <gtest/gtest.h>
#include <sys/inotify.h>
#include <unistd.h>

namespace {

/// Waits for a file of a folder to be closed after writing.
class WrittenFile {
public:
    explicit WrittenFile(const std::string& folder) : m_notifier(inotify_init1(IN_CLOEXEC))
    {
        inotify_add_watch(m_notifier, folder.c_str(), IN_CLOSE_WRITE);
    }
    ~WrittenFile() { close(m_notifier); }

    WrittenFile(const WrittenFile&) = delete;
    WrittenFile& operator=(const WrittenFile&) = delete;

    bool wait() const
    {
        std::array<char, 4096> events{};
        return read(m_notifier, events.data(), events.size()) > 0;
    }

private:
    int m_notifier;
};

std::ptrdiff_t threadsOfTheProcess()
{
    const std::filesystem::directory_iterator tasks("/proc/self/task");
    return std::distance(begin(tasks), end(tasks));
}

class TracerFlushThreadTest : public testing::Test {
protected:
    TracerFlushThreadTest() { m_tracer->setSynchronous(false); }

    PublishedTracer m_tracer;
};

} // namespace

TEST_F(TracerFlushThreadTest, WritesPendingLinesNoEarlierThanAfterASecondAndAgain)
{
    const WrittenFile written(m_tracer.folder().path());
    const auto before = std::chrono::steady_clock::now();

    m_tracer->PrintString("first\n");
    m_tracer->Initialize();
    ASSERT_TRUE(written.wait());
    EXPECT_GE(std::chrono::steady_clock::now() - before, std::chrono::seconds(1));
    EXPECT_EQ(m_tracer.lines(), "first\n");

    m_tracer->PrintString("second\n");
    while (!m_tracer->areAllMsgFlushed())
        ASSERT_TRUE(written.wait());
    EXPECT_EQ(m_tracer.lines(), "first\nsecond\n");
}

TEST_F(TracerFlushThreadTest, IsNotStartedWhenSynchronous)
{
    m_tracer->setSynchronous(true);
    const std::ptrdiff_t before = threadsOfTheProcess();

    m_tracer->Initialize();

    EXPECT_EQ(threadsOfTheProcess(), before);
}

TEST(TracerFlushThread, EndsWhenThereIsNoTracer)
{
    ASSERT_EQ(Tracer::GetInstance(), nullptr);
    TracerFlushThread thread;

    thread.start();
    KFThread::waitForThreadTermination(&thread);

    EXPECT_FALSE(thread.isRunning());
}
