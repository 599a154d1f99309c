#include "ContendedMutex.h"
#include "Logger.h"
#include "TemporaryFolder.h"

#include <array>
#include <cstdio>
#include <future>
#include <string>

#include <gtest/gtest.h>

namespace {

/// A log whose mutex the test may hold.
class HeldLogger : public Logger {
public:
    using Logger::m_mutex;
};

class LoggerMutex : public testing::Test {
protected:
    LoggerMutex()
    {
        m_logger.SetFileName(m_folder.file("app"));
        m_logger.setActive(true);
    }

    const TemporaryFolder m_folder;
    HeldLogger m_logger;
};

const Logger* writingLogger = nullptr;
bool wasActiveWhileWriting = true;

} // namespace

extern "C" {
// NOLINTBEGIN(bugprone-reserved-identifier): the names that the linker's --wrap gives
int __real_fputs(const char* text, std::FILE* stream);

int __wrap_fputs(const char* text, std::FILE* stream)
{
    if (writingLogger != nullptr)
        wasActiveWhileWriting = writingLogger->isActive();
    return __real_fputs(text, stream);
}
// NOLINTEND(bugprone-reserved-identifier)
}

TEST_F(LoggerMutex, IsHeldWhileAMessageIsFormatted)
{
    std::array<char, 16> text{"too early"};

    m_logger.m_mutex.acquire();
    const std::future<void> printed =
        startUntilItWaits([&] { m_logger.PrintMsg(LoggerMsgType::LEVEL_0, "%s", text.data()); });
    text = {"in time"};
    m_logger.m_mutex.release();
    printed.wait();
    m_logger.FinishLogging();

    EXPECT_EQ(m_folder.read("app_0.txt"), "[LEVEL_0] in time\n");
}

TEST_F(LoggerMutex, IsHeldWhenLoggingIsFinished)
{
    m_logger.PrintMsg(LoggerMsgType::LEVEL_0, "pending");

    m_logger.m_mutex.acquire();
    const std::future<void> finished = startUntilItWaits([this] { m_logger.FinishLogging(); });
    EXPECT_TRUE(m_logger.isActive()) << "nothing happens while another thread has the mutex";
    m_logger.m_mutex.release();
    finished.wait();

    EXPECT_FALSE(m_logger.isActive());
    EXPECT_EQ(m_folder.read("app_0.txt"), "[LEVEL_0] pending\n");
}

TEST_F(LoggerMutex, IsFreeOnceAllIsDone)
{
    m_logger.PrintMsg(LoggerMsgType::LEVEL_0, "pending");
    m_logger.FinishLogging();

    std::async(std::launch::async, [this] {
        EXPECT_TRUE(m_logger.m_mutex.tryacquire());
        m_logger.m_mutex.release();
    }).wait();
}

TEST_F(LoggerMutex, FinishSwitchesOffBeforeItWritesWhatIsPending)
{
    m_logger.PrintMsg(LoggerMsgType::LEVEL_0, "pending");

    writingLogger = &m_logger;
    m_logger.FinishLogging();
    writingLogger = nullptr;

    EXPECT_FALSE(wasActiveWhileWriting);
}
