#include "AskedSleep.h"
#include "CallMarker.h"
#include "ContendedMutex.h"
#include "Logger.h"
#include "LoggerFlushThread.h"
#include "PipedStream.h"
#include "ProcessThreads.h"
#include "PublishedTracer.h"
#include "TemporaryFolder.h"
#include "Waiting.h"

#include <algorithm>
#include <chrono>
#include <future>
#include <memory>
#include <optional>
#include <regex>
#include <sstream>
#include <thread>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

namespace {

class TracedFlushThread : public LoggerFlushThread {
public:
    TracedFlushThread() : LoggerFlushThread(nullptr) {}
    void run() override { const CallMarker marker("run"); }
};

/// A log whose mutex the test may hold.
class HeldLogger : public Logger {
public:
    using Logger::m_mutex;
};

/// Returns when every background thread that runs already has had the time of a pass: another log's
/// thread, begun later, has made two.
void waitForAPassOfEveryThread()
{
    const TemporaryFolder folder;
    Logger other;
    other.SetFileName(folder.file("other"));
    other.Initialize();

    for (int pass = 1; pass <= 2; ++pass) {
        other.PrintMsg(LoggerMsgType::LEVEL_0, "%d", pass);
        waitUntilWritten(other);
    }
}

} // namespace

TEST(LoggerFlushThread, WritesPendingLinesNoEarlierThanAfterASecondAndAgain)
{
    const TemporaryFolder folder;
    Logger logger;
    logger.SetFileName(folder.file("app"));
    const auto before = std::chrono::steady_clock::now();

    logger.PrintMsg(LoggerMsgType::LEVEL_0, "first");
    logger.Initialize();
    waitUntilWritten(logger);
    EXPECT_GE(std::chrono::steady_clock::now() - before, std::chrono::seconds(1));
    EXPECT_EQ(folder.read("app_0.txt"), "[LEVEL_0] first\n");

    logger.PrintMsg(LoggerMsgType::LEVEL_0, "second");
    waitUntilWritten(logger);
    EXPECT_EQ(folder.read("app_0.txt"), "[LEVEL_0] first\n[LEVEL_0] second\n");
}

TEST(LoggerFlushThread, WritesInALaterPassWhatAPassCouldNotWrite)
{
    const TemporaryFolder folder;
    const std::string target = folder.write("target", "");
    ASSERT_EQ(symlink(target.c_str(), folder.file("app_0.txt").c_str()), 0);
    const std::string refusal = "Logger : can't open " + folder.file("app_0.txt") + "\n";
    const std::string line = "[LEVEL_0] one\n";
    // Never destroyed: its thread, which never ends, holds its mutex for ever.
    Logger& logger = *std::make_unique<Logger>().release();
    logger.SetFileName(folder.file("app"));
    logger.PrintMsg(LoggerMsgType::LEVEL_0, "one");

    const PipedStream errors(STDERR_FILENO);
    logger.Initialize();
    std::string told;
    // The threads of other logs may tell of theirs.
    while (told.find(refusal) == std::string::npos)
        told += errors.read();
    EXPECT_EQ(folder.read("target"), "") << "a link is refused";
    unlink(folder.file("app_0.txt").c_str());

    EXPECT_TRUE(holdsInTime([&] { return folder.read("app_0.txt") == line; }))
        << folder.read("app_0.txt");
}

TEST(LoggerFlushThread, HasNoNameInTraces)
{
    const PublishedTracer tracer;
    TracedFlushThread thread;

    thread.start();
    thread.stop();

    EXPECT_EQ(tracer.linesOfAllThreads(), "[<id>][<id>]run\n") << "named by its number";
}

TEST(LoggerFlushThread, SleepsASecond)
{
    const TemporaryFolder folder;
    Logger logger;
    logger.SetFileName(folder.file("app"));

    logger.Initialize();

    EXPECT_EQ(nextAskedSleep(), std::chrono::seconds(1));
}

TEST(LoggerFlushThread, IsOneThreadForALog)
{
    const TemporaryFolder folder;
    Logger logger;
    logger.SetFileName(folder.file("app"));
    logger.Initialize();
    const std::ptrdiff_t before = threadsOfTheProcess();

    logger.Initialize();

    EXPECT_EQ(threadsOfTheProcess(), before);
}

TEST(LoggerFlushThread, IsNotStartedForASynchronousLog)
{
    const TemporaryFolder folder;
    Logger logger;
    logger.setSynchronous(true);
    logger.SetFileName(folder.file("app"));
    const std::ptrdiff_t before = threadsOfTheProcess();

    logger.Initialize();

    EXPECT_EQ(threadsOfTheProcess(), before);
}

TEST(LoggerFlushThread, SurvivesItsLogAndWritesForItNoMore)
{
    const TemporaryFolder folder;
    std::optional<Logger> logger(std::in_place);
    logger->SetFileName(folder.file("app"));
    logger->Initialize();
    const std::ptrdiff_t before = threadsOfTheProcess();

    // The next log stands where the former one stood, without a thread of its own.
    logger.emplace();
    logger->SetFileName(folder.file("app"));
    logger->PrintMsg(LoggerMsgType::LEVEL_0, "waiting");
    waitForAPassOfEveryThread();

    EXPECT_FALSE(logger->areAllMsgFlushed());
    EXPECT_EQ(folder.read("app_0.txt"), "");
    EXPECT_EQ(threadsOfTheProcess(), before + 1) << "the one that was waited for, too";
}

TEST(LoggerFlushThread, LetsItsLogGoWhileAnotherThreadKeepsTheMutexOfTheLog)
{
    HeldLogger logger;
    logger.SetFileName("msvc");
    const auto thread = std::make_shared<LoggerFlushThread>(&logger);
    logger.m_mutex.acquire();
    thread->start();
    waitUntilWaitedFor(logger.m_mutex);

    const auto forgotten = std::async(std::launch::async, [&thread] { thread->letGo(); });
    const std::future_status status = forgotten.wait_for(std::chrono::seconds(30));
    logger.m_mutex.release();

    EXPECT_EQ(status, std::future_status::ready);
}

TEST(LoggerFlushThread, LetsItsLogGoNoEarlierThanAtTheEndOfAPassThatIsUnderWay)
{
    HeldLogger logger;
    logger.SetFileName("msvc");
    const auto thread = std::make_shared<LoggerFlushThread>(&logger);
    std::future<void> forgotten;
    std::promise<bool> forgottenInThePass;
    MutexWatch watch(logger.m_mutex);
    watch.onNextWait([&] {
        forgotten = startUntilItWaits([&thread] { thread->letGo(); });
        forgottenInThePass.set_value(
            forgotten.wait_for(std::chrono::seconds(0)) == std::future_status::ready);
    });

    logger.m_mutex.acquire();
    thread->start();
    EXPECT_FALSE(forgottenInThePass.get_future().get());
    logger.m_mutex.release();
    forgotten.wait();
}

TEST(LoggerFlushThread, KeepsItsObjectWithoutItsLog)
{
    auto thread = std::make_shared<LoggerFlushThread>(nullptr);
    const std::weak_ptr<LoggerFlushThread> object = thread;
    thread->start();

    thread->letGo();
    thread.reset();

    EXPECT_FALSE(object.expired()) << "its body never ends";
}

class LoggerThreads : public testing::TestWithParam<bool> {};

TEST_P(LoggerThreads, WriteWholeLinesEachInItsOrder)
{
    constexpr int threadCount = 64;
    constexpr int lineCount = 50;
    const TemporaryFolder folder;
    Logger logger;
    Logger::SetInstance(&logger);
    logger.setSynchronous(GetParam());
    logger.setActive(true);
    logger.addLevels(8);
    logger.SetFileName(folder.file("app"));
    logger.Initialize();

    std::vector<std::thread> threads;
    threads.reserve(threadCount);
    for (int thread = 0; thread < threadCount; ++thread)
        threads.emplace_back([thread] {
            for (int line = 0; line < lineCount; ++line) {
                TAV_LOG(LoggerMsgType::LEVEL_0, "%d %d", thread, line);
                TAV_LOG(LoggerMsgType::DEBUG, "not logged");
            }
        });
    for (std::thread& thread : threads)
        thread.join();
    logger.FinishLogging();

    std::vector<int> next(threadCount);
    std::istringstream lines(folder.read("app_0.txt"));
    for (std::string line; std::getline(lines, line);) {
        int thread = -1;
        int number = -1;
        ASSERT_EQ(std::sscanf(line.c_str(), "[LEVEL_0] %d %d", &thread, &number), 2) << line;
        ASSERT_TRUE(thread >= 0 && thread < threadCount) << line;
        ASSERT_EQ(number, next[static_cast<std::size_t>(thread)]++) << line;
    }
    EXPECT_EQ(next, std::vector<int>(threadCount, lineCount));
}

INSTANTIATE_TEST_SUITE_P(Modes, LoggerThreads, testing::Bool());

TEST(LoggerThreads, MayChangeTheOptionsWhileOthersLog)
{
    const TemporaryFolder folder;
    Logger logger;
    Logger::SetInstance(&logger);
    logger.SetFileName(folder.file("app"));
    logger.addLevels(8);
    logger.setActive(true);

    std::thread writer([] {
        for (int line = 0; line < 1000; ++line)
            TAV_LOG(LoggerMsgType::LEVEL_0, "%d", line);
    });
    for (int round = 0; round < 1000; ++round) {
        logger.setActive(round % 2 == 0);
        logger.setPrintTime(round % 2 == 0);
        logger.addLevels(16);
    }
    writer.join();

    logger.setActive(true);
    TAV_LOG(LoggerMsgType::LEVEL_0, "%d", 1000);
    logger.FinishLogging();

    int previous = -1;
    std::istringstream lines(folder.read("app_0.txt"));
    const std::regex wholeLine(R"((\[\d\d:\d\d:\d\d-\d\d\d\])?\[LEVEL_0\] (\d+))");
    for (std::string line; std::getline(lines, line);) {
        std::smatch parts;
        ASSERT_TRUE(std::regex_match(line, parts, wholeLine)) << line;
        ASSERT_LT(previous, std::stoi(parts.str(2))) << line;
        previous = std::stoi(parts.str(2));
    }
    EXPECT_EQ(previous, 1000);
}

TEST(LoggerThreads, MayTraceAndLogAtTheSameTime)
{
    constexpr int threadCount = 64;
    constexpr int lineCount = 20;
    PublishedTracer tracer;
    const TemporaryFolder folder;
    Logger logger;
    Logger::SetInstance(&logger);
    logger.SetFileName(folder.file("app"));
    logger.addLevels(8);
    logger.setActive(true);
    logger.Initialize();

    std::vector<std::thread> threads;
    threads.reserve(threadCount);
    for (int thread = 0; thread < threadCount; ++thread)
        threads.emplace_back([thread] {
            for (int line = 0; line < lineCount; ++line) {
                const CallMarker marker("work");
                TAV_TRACE(marker, TraceMsgType::D, "%d %d", thread, line);
                TAV_LOG(LoggerMsgType::LEVEL_0, "%d %d", thread, line);
            }
        });
    for (std::thread& thread : threads)
        thread.join();
    logger.FinishLogging();

    const std::string logged = folder.read("app_0.txt");
    const std::string traced = tracer.folder().read("trace_0.txt");
    EXPECT_EQ(std::count(logged.begin(), logged.end(), '\n'), threadCount * lineCount);
    EXPECT_EQ(std::count(traced.begin(), traced.end(), '\n'), 2 * threadCount * lineCount);
}
