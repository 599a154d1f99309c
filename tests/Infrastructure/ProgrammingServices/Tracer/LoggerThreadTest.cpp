#include "CallMarker.h"
#include "Logger.h"
#include "PublishedTracer.h"
#include "TemporaryFolder.h"

#include <algorithm>
#include <chrono>
#include <sstream>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

namespace {

std::ptrdiff_t countThreads()
{
    return std::distance(
        std::filesystem::directory_iterator("/proc/self/task"),
        std::filesystem::directory_iterator());
}

} // namespace

TEST(LoggerFlushThread, WritesPendingLinesNoEarlierThanAfterASecond)
{
    const auto before = std::chrono::steady_clock::now();
    const TemporaryFolder folder;
    Logger logger;
    logger.SetFileName(folder.file("app"));
    logger.PrintMsg(LoggerMsgType::LEVEL_0, "one");

    logger.Initialize();
    while (!logger.areAllMsgFlushed())
        std::this_thread::yield();

    EXPECT_GE(std::chrono::steady_clock::now() - before, std::chrono::seconds(1));
    EXPECT_EQ(folder.read("app_0.txt"), "[LEVEL_0] one\n");
}

TEST(LoggerFlushThread, IsOneThreadForALog)
{
    const TemporaryFolder folder;
    Logger logger;
    logger.SetFileName(folder.file("app"));
    logger.Initialize();
    const std::ptrdiff_t before = countThreads();

    logger.Initialize();

    EXPECT_EQ(countThreads(), before);
}

TEST(LoggerFlushThread, IsNotStartedForASynchronousLog)
{
    const TemporaryFolder folder;
    Logger logger;
    logger.setSynchronous(true);
    logger.SetFileName(folder.file("app"));
    const std::ptrdiff_t before = countThreads();

    logger.Initialize();

    EXPECT_EQ(countThreads(), before);
}

TEST(LoggerFlushThread, SurvivesItsLog)
{
    const TemporaryFolder folder;
    auto logger = std::make_unique<Logger>();
    logger->SetFileName(folder.file("app"));
    logger->Initialize();
    const std::ptrdiff_t before = countThreads();

    logger.reset();

    EXPECT_EQ(countThreads(), before);
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

    logger.FinishLogging();
    EXPECT_TRUE(logger.areAllMsgFlushed());
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
