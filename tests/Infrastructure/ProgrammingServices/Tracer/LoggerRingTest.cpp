#include "FileSystemManagement.h"
#include "Logger.h"
#include "TemporaryFolder.h"

#include <array>
#include <csignal>
#include <ctime>
#include <future>
#include <thread>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

class MutexLogger : public Logger {
public:
    /// Whether another thread than the caller's can have the mutex.
    bool isFreeForOthers()
    {
        bool taken = false;
        std::thread([&] {
            taken = m_mutex.tryacquire();
            if (taken)
                m_mutex.release();
        }).join();
        return taken;
    }

    void acquire() { m_mutex.acquire(); }
    void release() { m_mutex.release(); }
};

/// A log with a ring in a folder of its own; lines wait for an explicit write pass.
class LoggerRing : public testing::Test {
protected:
    void print(std::initializer_list<const char*> messages)
    {
        for (const char* message : messages)
            m_logger.PrintMsg(LoggerMsgType::LEVEL_0, "%s", message);
    }

    /// A ring file with one line, modified at the local time.
    void writeFile(const std::string& name, int day, int hour) const
    {
        m_folder.write(name, "old\n");
        std::tm local{};
        local.tm_year = 120;
        local.tm_mon = 4;
        local.tm_mday = day;
        local.tm_hour = hour;
        local.tm_isdst = -1;
        const std::timespec time{std::mktime(&local), 0};
        const std::array times{time, time};
        ASSERT_EQ(utimensat(AT_FDCWD, m_folder.file(name).c_str(), times.data(), 0), 0);
    }

    std::string currentFile()
    {
        return std::filesystem::path(m_logger.getCurrentFileName()).filename();
    }

    const TemporaryFolder m_folder;
    MutexLogger m_logger;
};

} // namespace

TEST_F(LoggerRing, TakesAPathAsItStands)
{
    m_logger.SetFolderName("/nowhere/");

    m_logger.SetFileName(m_folder.file("app"));

    EXPECT_EQ(m_logger.getCurrentFileName(), m_folder.file("app_0.txt"));
}

TEST_F(LoggerRing, TakesANameWithBackslashAsItStands)
{
    m_logger.SetFolderName(m_folder.path() + "/");

    m_logger.SetFileName("logs\\app");

    EXPECT_EQ(m_logger.getCurrentFileName(), "logs\\app_0.txt");
}

TEST_F(LoggerRing, PlacesABareNameDirectlyBehindTheFolder)
{
    m_logger.SetFolderName(m_folder.file("prefix-"));

    m_logger.SetFileName("app");

    EXPECT_EQ(m_logger.getCurrentFileName(), m_folder.file("prefix-app_0.txt"));
}

TEST_F(LoggerRing, PlacesABareNameInTheOutputFolderWhenThereIsNoOther)
{
    m_logger.SetFileName("app");

    EXPECT_EQ(
        m_logger.getCurrentFileName(),
        FileSystemManagement::getCurrentOutputDirectory() + "app_0.txt");
}

class LoggerNoRing : public LoggerRing, public testing::WithParamInterface<std::string> {};

TEST_P(LoggerNoRing, IsTheCurrentOutput)
{
    m_logger.SetFolderName(m_folder.path() + "/");

    m_logger.SetFileName(GetParam());

    EXPECT_EQ(m_logger.getCurrentFileName(), GetParam());
}

INSTANTIATE_TEST_SUITE_P(Names, LoggerNoRing, testing::Values("console", "msvc"));

TEST_F(LoggerRing, ReplacesTheOutputByALaterName)
{
    m_logger.SetFileName("console");
    m_logger.SetFileName(m_folder.file("app"));
    print({"one"});
    m_logger.WriteOnFile();

    EXPECT_EQ(m_folder.read("app_0.txt"), "[LEVEL_0] one\n");
}

TEST_F(LoggerRing, TakesTheNextFileWhenTheMaximumOfLinesIsReached)
{
    m_logger.setMaxLinesPerFile(2);
    m_logger.SetFileName(m_folder.file("app"));

    print({"one", "two", "three"});
    m_logger.WriteOnFile();

    EXPECT_EQ(m_folder.read("app_0.txt"), "[LEVEL_0] one\n[LEVEL_0] two\n");
    EXPECT_EQ(m_folder.read("app_1.txt"), "[LEVEL_0] three\n");
    EXPECT_EQ(currentFile(), "app_1.txt");
}

TEST_F(LoggerRing, TakesTheNextFileAfterAHundredThousandLinesByDefault)
{
    m_logger.SetFileName(m_folder.file("app"));

    for (int line = 1; line <= 100001; ++line)
        m_logger.PrintMsg(LoggerMsgType::LEVEL_0, "%d", line);
    m_logger.WriteOnFile();

    EXPECT_TRUE(m_folder.read("app_0.txt").ends_with("\n[LEVEL_0] 100000\n"));
    EXPECT_EQ(m_folder.read("app_1.txt"), "[LEVEL_0] 100001\n");
}

TEST_F(LoggerRing, StartsAgainAtZeroBehindTheTenthFileByDefault)
{
    m_logger.setMaxLinesPerFile(1);
    m_logger.SetFileName(m_folder.file("app"));

    print({"0", "1", "2", "3", "4", "5", "6", "7", "8"});
    m_logger.WriteOnFile();
    EXPECT_EQ(currentFile(), "app_9.txt");
    print({"9"});
    m_logger.WriteOnFile();

    EXPECT_EQ(currentFile(), "app_0.txt");
    EXPECT_FALSE(std::filesystem::exists(m_folder.file("app_10.txt")));
}

TEST_F(LoggerRing, LosesTheLinesWrittenBehindAChangeOfFileAtTheNextPass)
{
    m_logger.setMaxLinesPerFile(2);
    m_logger.SetFileName(m_folder.file("app"));
    print({"one", "two", "lost"});
    m_logger.WriteOnFile();

    print({"four"});
    m_logger.WriteOnFile();

    EXPECT_EQ(m_folder.read("app_1.txt"), "[LEVEL_0] four\n");
}

TEST_F(LoggerRing, CountsLostLinesToo)
{
    m_logger.setMaxLinesPerFile(2);
    m_logger.SetFileName(m_folder.file("app"));
    print({"one", "two", "lost"});
    m_logger.WriteOnFile();

    print({"four", "five"});
    m_logger.WriteOnFile();

    EXPECT_EQ(m_folder.read("app_1.txt"), "[LEVEL_0] four\n");
    EXPECT_EQ(m_folder.read("app_2.txt"), "[LEVEL_0] five\n");
}

TEST_F(LoggerRing, EmptiesAnOlderFileOfTheRingOnlyInTheNextPass)
{
    m_folder.write("app_1.txt", "old\n");
    m_logger.setMaxLinesPerFile(1);
    m_logger.SetFileName(m_folder.file("app"));

    print({"one"});
    m_logger.WriteOnFile();
    EXPECT_EQ(m_folder.read("app_1.txt"), "old\n");
    print({"two"});
    m_logger.WriteOnFile();

    EXPECT_EQ(m_folder.read("app_1.txt"), "[LEVEL_0] two\n");
}

TEST_F(LoggerRing, GoesOnInTheOnlyFile)
{
    m_folder.write("app_0.txt", "old\n");
    m_logger.SetFileName(m_folder.file("app"));

    print({"new"});
    m_logger.WriteOnFile();

    EXPECT_EQ(m_folder.read("app_0.txt"), "old\n[LEVEL_0] new\n");
}

TEST_F(LoggerRing, ContinuesTheLineCountOfTheFileItGoesOnIn)
{
    m_folder.write("app_0.txt", "one\ntwo\nthree");
    m_logger.setMaxLinesPerFile(4);
    m_logger.SetFileName(m_folder.file("app"));

    print({"", "next file"});
    m_logger.WriteOnFile();

    EXPECT_EQ(m_folder.read("app_0.txt"), "one\ntwo\nthree[LEVEL_0] \n");
    EXPECT_EQ(m_folder.read("app_1.txt"), "[LEVEL_0] next file\n");
}

TEST_F(LoggerRing, GoesOnInTheFileWrittenLast)
{
    for (int index = 0; index < 10; ++index)
        writeFile("app_" + std::to_string(index) + ".txt", index < 4 ? 20 : 10, 12);

    m_logger.SetFileName(m_folder.file("app"));

    EXPECT_EQ(currentFile(), "app_3.txt");
}

TEST_F(LoggerRing, StopsTheSearchAtTheFirstMissingFile)
{
    writeFile("app_0.txt", 10, 12);
    writeFile("app_1.txt", 11, 12);
    writeFile("app_3.txt", 12, 12);

    m_logger.SetFileName(m_folder.file("app"));

    EXPECT_EQ(currentFile(), "app_1.txt");
}

TEST_F(LoggerRing, TakesALaterDayAtAnEarlierHourAsOlder)
{
    writeFile("app_0.txt", 10, 12);
    writeFile("app_1.txt", 11, 11);

    m_logger.SetFileName(m_folder.file("app"));

    EXPECT_EQ(currentFile(), "app_0.txt");
}

TEST_F(LoggerRing, TakesFilesOfTheSameSecondAsWrittenInOrder)
{
    writeFile("app_0.txt", 10, 12);
    writeFile("app_1.txt", 10, 12);

    m_logger.SetFileName(m_folder.file("app"));

    EXPECT_EQ(currentFile(), "app_1.txt");
}

TEST_F(LoggerRing, LooksAtTheIndexOfTheMaximumTooAndWrapsIt)
{
    writeFile("app_0.txt", 10, 12);
    writeFile("app_1.txt", 11, 12);
    writeFile("app_2.txt", 12, 12);
    m_logger.setMaxFiles(2);

    m_logger.SetFileName(m_folder.file("app"));

    EXPECT_EQ(currentFile(), "app_0.txt");
}

TEST_F(LoggerRing, SearchesAmongTheFilesKnownWhenTheNameIsSet)
{
    for (int index = 0; index < 15; ++index)
        writeFile("app_" + std::to_string(index) + ".txt", index + 1, 12);

    m_logger.SetFileName(m_folder.file("app"));
    m_logger.setMaxFiles(15);

    EXPECT_EQ(currentFile(), "app_0.txt");
}

TEST_F(LoggerRing, LeavesTheLineCountAloneWhenTheNewRingHasNoFile)
{
    m_logger.setMaxLinesPerFile(2);
    m_logger.SetFileName(m_folder.file("first"));
    print({"one"});
    m_logger.WriteOnFile();

    m_logger.SetFileName(m_folder.file("second"));
    print({"two", "three"});
    m_logger.WriteOnFile();

    EXPECT_EQ(m_folder.read("second_0.txt"), "[LEVEL_0] two\n");
    EXPECT_EQ(m_folder.read("second_1.txt"), "[LEVEL_0] three\n");
}

TEST_F(LoggerRing, LeavesTheWishToEmptyAloneWhenTheNewRingHasAFile)
{
    m_folder.write("second_0.txt", "old\n");
    m_logger.SetFileName(m_folder.file("first"));

    m_logger.SetFileName(m_folder.file("second"));
    print({"new"});
    m_logger.WriteOnFile();

    EXPECT_EQ(m_folder.read("second_0.txt"), "[LEVEL_0] new\n");
}

TEST_F(LoggerRing, OpensNothingForTheConsole)
{
    m_logger.SetFileName(m_folder.file("app"));
    print({"one"});
    m_logger.SetFileName("console");

    m_logger.WriteOnFile();

    EXPECT_FALSE(m_logger.areAllMsgFlushed());
    EXPECT_TRUE(std::filesystem::is_empty(m_folder.path()));
}

TEST_F(LoggerRing, TellsAFileThatCannotBeOpenedAndKeepsLinesAndMutex)
{
    std::filesystem::create_directory(m_folder.file("app_0.txt"));
    m_logger.SetFileName(m_folder.file("app"));
    print({"one"});
    EXPECT_TRUE(m_logger.isFreeForOthers());

    testing::internal::CaptureStderr();
    m_logger.WriteOnFile();

    EXPECT_EQ(
        testing::internal::GetCapturedStderr(),
        "Logger : can't open " + m_folder.file("app_0.txt") + "\n");
    EXPECT_FALSE(m_logger.areAllMsgFlushed());
    EXPECT_FALSE(m_logger.isFreeForOthers());
    m_logger.release();
}

TEST_F(LoggerRing, WritesTheLinesThatStayedQueuedInTheNextPass)
{
    std::filesystem::create_directory(m_folder.file("app_0.txt"));
    m_logger.SetFileName(m_folder.file("app"));
    print({"one"});
    testing::internal::CaptureStderr();
    m_logger.WriteOnFile();
    testing::internal::GetCapturedStderr();

    std::filesystem::remove(m_folder.file("app_0.txt"));
    m_logger.WriteOnFile();
    m_logger.release();

    EXPECT_EQ(m_folder.read("app_0.txt"), "[LEVEL_0] one\n");
}

TEST_F(LoggerRing, StopsThePassWhenTheNextFileCannotBeOpenedAndFreesTheMutex)
{
    m_logger.setMaxLinesPerFile(1);
    m_logger.SetFileName(m_folder.file("app"));
    std::filesystem::create_directory(m_folder.file("app_1.txt"));
    print({"one", "two"});

    testing::internal::CaptureStderr();
    m_logger.WriteOnFile();

    EXPECT_EQ(
        testing::internal::GetCapturedStderr(),
        "Logger : can't open " + m_folder.file("app_1.txt") + "\n");
    EXPECT_EQ(m_folder.read("app_0.txt"), "[LEVEL_0] one\n");
    EXPECT_FALSE(m_logger.areAllMsgFlushed());
    EXPECT_TRUE(m_logger.isFreeForOthers());
}

TEST_F(LoggerRing, DrainGivesUpAFileThatCannotBeOpenedAndFreesTheMutex)
{
    std::filesystem::create_directory(m_folder.file("app_0.txt"));
    m_logger.SetFileName(m_folder.file("app"));
    print({"one"});

    testing::internal::CaptureStderr();
    m_logger.drain();

    EXPECT_EQ(
        testing::internal::GetCapturedStderr(),
        "Logger : can't open " + m_folder.file("app_0.txt") + "\n");
    EXPECT_FALSE(m_logger.areAllMsgFlushed());
    EXPECT_TRUE(m_logger.isFreeForOthers());
}

TEST_F(LoggerRing, DrainGivesUpAMutexThatAnotherThreadHolds)
{
    m_logger.SetFileName(m_folder.file("app"));
    print({"one"});
    std::promise<void> held;
    std::promise<void> drained;
    std::thread holder([&] {
        m_logger.acquire();
        held.set_value();
        drained.get_future().wait();
        m_logger.release();
    });
    held.get_future().wait();

    m_logger.drain();
    drained.set_value();
    holder.join();

    EXPECT_FALSE(m_logger.areAllMsgFlushed());
    EXPECT_EQ(m_folder.read("app_0.txt"), "");
}

TEST_F(LoggerRing, FinishNeverReturnsWhenTheFileCannotBeOpened)
{
    std::filesystem::create_directory(m_folder.file("app_0.txt"));
    m_logger.SetFileName(m_folder.file("app"));
    print({"one"});

    EXPECT_EXIT(
        {
            close(STDERR_FILENO); // every round tells the failure
            alarm(1);
            m_logger.FinishLogging();
        },
        testing::KilledBySignal(SIGALRM), "");
}
