#include "LineOutput.h"

#include "CrashReport.h"
#include "FileSystemManagement.h"
#include "JoinedOutputs.h"
#include "TemporaryFolder.h"

#include <ctime>
#include <filesystem>
#include <string>
#include <thread>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

/// A facility that is nothing but its output.
class TestOutput : public LineOutput {
public:
    TestOutput() : LineOutput("Facility") {}

    using LineOutput::requireFileName;
    using LineOutput::writeAllPending;

    KFMutex& mutex() { return m_mutex; }

    /// Whether another thread can have the mutex.
    bool isMutexFree()
    {
        bool isFree = false;
        std::thread([this, &isFree] {
            isFree = m_mutex.tryacquire();
            if (isFree)
                m_mutex.release();
        }).join();
        return isFree;
    }
};

class LineOutputTest : public testing::Test {
protected:
    // A file by mistake named "console" would be made in the test's own folder.
    void SetUp() override { std::filesystem::current_path(m_folder.path()); }
    void TearDown() override { std::filesystem::current_path(m_formerPath); }

    void print(const std::string& lines)
    {
        std::size_t begin = 0;
        for (std::size_t end = lines.find('\n'); end != std::string::npos;
             end = lines.find('\n', begin)) {
            m_output.PrintString(lines.substr(begin, end + 1 - begin));
            begin = end + 1;
        }
    }
    void printAndWrite(const std::string& lines)
    {
        print(lines);
        m_output.WriteOnFile();
    }
    std::string cannotOpen(const char* name) const
    {
        return "Facility : can't open " + m_folder.file(name) + "\n";
    }

    std::filesystem::path m_formerPath = std::filesystem::current_path();
    TemporaryFolder m_folder;
    TestOutput m_output;
};

/// A ring named "app" in the folder of the test.
class LineOutputRing : public LineOutputTest {
protected:
    void useRing() { m_output.SetFileName(m_folder.file("app")); }
    /// All of them of one moment, so that a test at midnight finds them in order too.
    void addOldFile(const char* name, const char* content) const
    {
        const std::timespec times[2] = {{1000, 0}, {1000, 0}};
        ASSERT_EQ(utimensat(AT_FDCWD, m_folder.write(name, content).c_str(), times, 0), 0);
    }
    void makeFolderInPlaceOf(const char* name) const
    {
        ASSERT_EQ(mkdir(m_folder.file(name).c_str(), 0700), 0);
    }
};

using LineOutputDeathTest = LineOutputTest;

} // namespace

TEST_F(LineOutputTest, StartsWithTheDefaultOptionsAndNoOutput)
{
    EXPECT_FALSE(m_output.isSynchronous());
    EXPECT_EQ(m_output.getMaxFiles(), 10);
    EXPECT_EQ(m_output.getMaxLinesPerFile(), 100000);
    EXPECT_EQ(m_output.getCurrentFileName(), "");
    EXPECT_TRUE(m_output.areAllMsgFlushed());
}

TEST_F(LineOutputTest, WritesEachLineToTheConsoleFollowedByAnEmptyLine)
{
    m_output.SetFileName("console");

    testing::internal::CaptureStdout();
    print("first\nsecond\n");

    EXPECT_EQ(testing::internal::GetCapturedStdout(), "first\n\nsecond\n\n");
    EXPECT_EQ(m_output.getCurrentFileName(), "console");
    EXPECT_TRUE(m_output.areAllMsgFlushed());
}

TEST_F(LineOutputTest, DropsLinesForMsvc)
{
    m_output.SetFileName("msvc");

    testing::internal::CaptureStdout();
    print("dropped\n");

    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    EXPECT_EQ(m_output.getCurrentFileName(), "msvc");
    EXPECT_TRUE(m_output.areAllMsgFlushed());
}

TEST_F(LineOutputTest, PlacesANameWithASlashWhereItSays)
{
    m_output.SetFolderName("/elsewhere/");

    m_output.SetFileName(m_folder.file("app"));

    EXPECT_EQ(m_output.getCurrentFileName(), m_folder.file("app_0.txt"));
}

TEST_F(LineOutputTest, TakesANameWithABackslashAsAPath)
{
    m_output.SetFolderName("/elsewhere/");

    m_output.SetFileName("C:\\app");

    EXPECT_EQ(m_output.getCurrentFileName(), "C:\\app_0.txt");
}

TEST_F(LineOutputTest, PutsTheFolderDirectlyInFrontOfABareName)
{
    m_output.SetFolderName(m_folder.path() + "/my");

    m_output.SetFileName("app");

    EXPECT_EQ(m_output.getCurrentFileName(), m_folder.file("myapp_0.txt"));
}

TEST_F(LineOutputTest, PlacesABareNameWithoutFolderInTheOutputDirectory)
{
    m_output.SetFileName("app");

    EXPECT_EQ(
        m_output.getCurrentFileName(),
        FileSystemManagement::getCurrentOutputDirectory() + "app_0.txt");
}

TEST_F(LineOutputTest, TakesAConsoleInAFolderAsAFileName)
{
    m_output.SetFileName(m_folder.file("console"));

    EXPECT_EQ(m_output.getCurrentFileName(), m_folder.file("console_0.txt"));
}

TEST_F(LineOutputDeathTest, EmptyLineIsAViolation)
{
    EXPECT_CRASH_REPORT(
        m_output.PrintString(""),
        "REQUIRE VIOLATION : !(msg.empty()) - In File : "
        "Infrastructure/ProgrammingServices/Tracer/src/LineOutput - At Line : 50");
}

TEST_F(LineOutputDeathTest, EndsTheProcessWhenNoFileNameWasSet)
{
    EXPECT_EXIT(
        {
            joinOutputs();
            m_output.requireFileName("please name a file");
        },
        testing::ExitedWithCode(1), testing::Eq("please name a file\n"));
}

TEST_F(LineOutputTest, GoesOnWhenAFileNameWasSet)
{
    m_output.SetFileName("msvc");

    testing::internal::CaptureStdout();
    m_output.requireFileName("please name a file");

    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
}

TEST_F(LineOutputRing, QueuesLinesUntilAPassWritesThem)
{
    useRing();

    print("first\nsecond\n");
    EXPECT_FALSE(m_output.areAllMsgFlushed());
    EXPECT_EQ(m_folder.read("app_0.txt"), "");
    m_output.WriteOnFile();

    EXPECT_TRUE(m_output.areAllMsgFlushed());
    EXPECT_EQ(m_folder.read("app_0.txt"), "first\nsecond\n");
    EXPECT_TRUE(m_output.isMutexFree());
}

TEST_F(LineOutputRing, WritesAtOnceWhenSynchronous)
{
    m_output.setSynchronous(true);
    useRing();

    print("first\n");
    EXPECT_EQ(m_folder.read("app_0.txt"), "first\n");
    print("second\n");

    EXPECT_EQ(m_folder.read("app_0.txt"), "first\nsecond\n");
    EXPECT_TRUE(m_output.areAllMsgFlushed());
    EXPECT_TRUE(m_output.isMutexFree());
}

TEST_F(LineOutputRing, EmptiesTheFirstFileOfANewRingOnceAndThenAppends)
{
    useRing();
    m_folder.write("app_0.txt", "of another program\n");

    printAndWrite("first\n");
    printAndWrite("second\n");

    EXPECT_EQ(m_folder.read("app_0.txt"), "first\nsecond\n");
}

TEST_F(LineOutputRing, GoesOnInTheFileWrittenLast)
{
    addOldFile("app_0.txt", "old\n");
    addOldFile("app_1.txt", "old\n");

    useRing();
    printAndWrite("new\n");

    EXPECT_EQ(m_output.getCurrentFileName(), m_folder.file("app_1.txt"));
    EXPECT_EQ(m_folder.read("app_0.txt"), "old\n");
    EXPECT_EQ(m_folder.read("app_1.txt"), "old\nnew\n");
}

TEST_F(LineOutputRing, GoesOnCountingTheLinesOfTheFileWrittenLast)
{
    m_output.setMaxLinesPerFile(4);
    m_folder.write("app_0.txt", "old 1\nold 2\n");

    useRing();
    printAndWrite("new 3\nnew 4\n");

    EXPECT_EQ(m_folder.read("app_0.txt"), "old 1\nold 2\nnew 3\nnew 4\n");
    EXPECT_EQ(m_output.getCurrentFileName(), m_folder.file("app_1.txt"));
}

TEST_F(LineOutputRing, StartsAtTheFirstFileWhenTheLastOneLiesBehindTheRing)
{
    m_output.setMaxFiles(2);
    addOldFile("app_0.txt", "old 0\n");
    addOldFile("app_1.txt", "old 1\n");
    addOldFile("app_2.txt", "old 2\n");

    useRing();
    printAndWrite("new\n");

    EXPECT_EQ(m_output.getCurrentFileName(), m_folder.file("app_0.txt"));
    EXPECT_EQ(m_folder.read("app_0.txt"), "old 0\nnew\n");
}

TEST_F(LineOutputRing, LeavesTheLineCountAloneWhenNoRingExists)
{
    m_output.setMaxLinesPerFile(3);
    m_output.SetFileName(m_folder.file("former"));
    printAndWrite("1\n2\n");

    useRing();
    printAndWrite("3\n");

    EXPECT_EQ(m_folder.read("app_0.txt"), "3\n");
    EXPECT_EQ(m_output.getCurrentFileName(), m_folder.file("app_1.txt"));
}

TEST_F(LineOutputRing, EmptiesAnExistingRingWhenTheOutputBeforeItWasNew)
{
    m_folder.write("app_0.txt", "old\n");
    m_output.SetFileName(m_folder.file("former"));

    useRing();
    printAndWrite("new\n");

    EXPECT_EQ(m_folder.read("app_0.txt"), "new\n");
}

TEST_F(LineOutputRing, TakesTheNextFileWhenTheLineCountIsReached)
{
    m_output.setMaxLinesPerFile(2);
    useRing();

    printAndWrite("1\n2\n3\n");

    EXPECT_EQ(m_folder.read("app_0.txt"), "1\n2\n");
    EXPECT_EQ(m_folder.read("app_1.txt"), "3\n");
    EXPECT_EQ(m_output.getCurrentFileName(), m_folder.file("app_1.txt"));
}

TEST_F(LineOutputRing, TakesTheNextFileWhenTheLineCountIsPassed)
{
    useRing();
    printAndWrite("1\n2\n3\n");
    m_output.setMaxLinesPerFile(2);

    printAndWrite("4\n5\n");

    EXPECT_EQ(m_folder.read("app_0.txt"), "1\n2\n3\n4\n");
    EXPECT_EQ(m_folder.read("app_1.txt"), "5\n");
}

TEST_F(LineOutputRing, CountsTheLinesOfEachFileAnew)
{
    m_output.setMaxLinesPerFile(2);
    useRing();

    printAndWrite("1\n2\n3\n4\n5\n");

    EXPECT_EQ(m_folder.read("app_0.txt"), "1\n2\n");
    EXPECT_EQ(m_folder.read("app_1.txt"), "3\n4\n");
    EXPECT_EQ(m_folder.read("app_2.txt"), "5\n");
}

TEST_F(LineOutputRing, CountsLinesOverSeveralPasses)
{
    m_output.setMaxLinesPerFile(2);
    useRing();

    printAndWrite("1\n");
    printAndWrite("2\n");

    EXPECT_EQ(m_folder.read("app_0.txt"), "1\n2\n");
    EXPECT_EQ(m_output.getCurrentFileName(), m_folder.file("app_1.txt"));
}

TEST_F(LineOutputRing, LosesInTheNextPassTheLinesWrittenAfterAChangeOfFile)
{
    m_output.setMaxLinesPerFile(2);
    useRing();
    printAndWrite("1\n2\nlost\n");

    printAndWrite("4\n");

    EXPECT_EQ(m_folder.read("app_0.txt"), "1\n2\n");
    EXPECT_EQ(m_folder.read("app_1.txt"), "4\n");
}

TEST_F(LineOutputRing, AppendsToTheNextFileInThePassThatChangesToIt)
{
    m_output.setMaxLinesPerFile(1);
    m_output.setMaxFiles(1);
    useRing();

    printAndWrite("1\n2\n3\n");

    EXPECT_EQ(m_folder.read("app_0.txt"), "1\n2\n3\n");
}

TEST_F(LineOutputRing, StartsAgainAtTheFirstFileBehindTheLastOne)
{
    m_output.setSynchronous(true);
    m_output.setMaxLinesPerFile(1);
    m_output.setMaxFiles(3);
    useRing();

    print("1\n2\n3\n4\n");

    EXPECT_EQ(m_folder.read("app_0.txt"), "4\n");
    EXPECT_EQ(m_folder.read("app_1.txt"), "2\n");
    EXPECT_EQ(m_folder.read("app_2.txt"), "3\n");
    EXPECT_NE(access(m_folder.file("app_3.txt").c_str(), F_OK), 0);
}

TEST_F(LineOutputRing, TellsOfAFileThatCannotBeOpenedAndKeepsTheMutex)
{
    useRing();
    makeFolderInPlaceOf("app_0.txt");
    print("waiting\n");

    testing::internal::CaptureStderr();
    m_output.WriteOnFile();

    EXPECT_EQ(testing::internal::GetCapturedStderr(), cannotOpen("app_0.txt"));
    EXPECT_FALSE(m_output.areAllMsgFlushed());
    EXPECT_FALSE(m_output.isMutexFree());
    m_output.mutex().release();
    EXPECT_TRUE(m_output.isMutexFree());
}

TEST_F(LineOutputRing, WritesTheWaitingLinesOnceTheFileCanBeOpened)
{
    useRing();
    makeFolderInPlaceOf("app_0.txt");
    testing::internal::CaptureStderr();
    printAndWrite("waiting\n");
    testing::internal::GetCapturedStderr();
    ASSERT_EQ(rmdir(m_folder.file("app_0.txt").c_str()), 0);

    printAndWrite("next\n");

    EXPECT_EQ(m_folder.read("app_0.txt"), "waiting\nnext\n");
    m_output.mutex().release();
}

TEST_F(LineOutputRing, AppendsAfterTheOpeningThatWasToEmptyTheFileFailed)
{
    useRing();
    makeFolderInPlaceOf("app_0.txt");
    testing::internal::CaptureStderr();
    m_output.WriteOnFile();
    testing::internal::GetCapturedStderr();
    ASSERT_EQ(rmdir(m_folder.file("app_0.txt").c_str()), 0);
    m_folder.write("app_0.txt", "old\n");

    printAndWrite("new\n");

    EXPECT_EQ(m_folder.read("app_0.txt"), "old\nnew\n");
    m_output.mutex().release();
}

TEST_F(LineOutputRing, StopsThePassWhenTheNextFileCannotBeOpenedAndReleasesTheMutex)
{
    m_output.setMaxLinesPerFile(2);
    useRing();
    makeFolderInPlaceOf("app_1.txt");

    testing::internal::CaptureStderr();
    printAndWrite("1\n2\n3\n");

    EXPECT_EQ(testing::internal::GetCapturedStderr(), cannotOpen("app_1.txt"));
    EXPECT_EQ(m_folder.read("app_0.txt"), "1\n2\n");
    EXPECT_FALSE(m_output.areAllMsgFlushed());
    EXPECT_TRUE(m_output.isMutexFree());
}

TEST_F(LineOutputRing, WritesTheRestOnceTheNextFileCanBeOpened)
{
    m_output.setMaxLinesPerFile(2);
    useRing();
    makeFolderInPlaceOf("app_1.txt");
    testing::internal::CaptureStderr();
    printAndWrite("1\n2\n3\n");
    testing::internal::GetCapturedStderr();
    ASSERT_EQ(rmdir(m_folder.file("app_1.txt").c_str()), 0);

    m_output.WriteOnFile();

    EXPECT_EQ(m_folder.read("app_1.txt"), "3\n");
    EXPECT_TRUE(m_output.areAllMsgFlushed());
}

TEST_F(LineOutputRing, PassWithTheConsoleAsOutputOpensNothing)
{
    useRing();
    print("waiting\n");
    m_output.SetFileName("console");

    testing::internal::CaptureStdout();
    m_output.WriteOnFile();

    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    EXPECT_NE(access("console", F_OK), 0);
    EXPECT_FALSE(m_output.areAllMsgFlushed());
    EXPECT_TRUE(m_output.isMutexFree());
}

TEST_F(LineOutputRing, PassWithMsvcAsOutputOpensNothing)
{
    useRing();
    print("waiting\n");
    m_output.SetFileName("msvc");

    m_output.WriteOnFile();

    EXPECT_NE(access("msvc", F_OK), 0);
    EXPECT_FALSE(m_output.areAllMsgFlushed());
    EXPECT_TRUE(m_output.isMutexFree());
}

TEST_F(LineOutputRing, WritesAllPendingLines)
{
    m_output.setMaxLinesPerFile(2);
    useRing();
    print("1\n2\n3\n");

    m_output.writeAllPending();

    EXPECT_TRUE(m_output.areAllMsgFlushed());
    EXPECT_EQ(m_folder.read("app_1.txt"), "3\n");
}

TEST_F(LineOutputRing, WritesNoPendingLinesWhenSynchronous)
{
    useRing();
    print("1\n");
    m_output.setSynchronous(true);

    m_output.writeAllPending();

    EXPECT_FALSE(m_output.areAllMsgFlushed());
}

TEST_F(LineOutputRing, DrainWritesWhatIsPending)
{
    m_output.setMaxLinesPerFile(2);
    useRing();
    print("1\n2\n3\n");

    m_output.drain();

    EXPECT_TRUE(m_output.areAllMsgFlushed());
    EXPECT_EQ(m_folder.read("app_0.txt"), "1\n2\n");
    EXPECT_EQ(m_folder.read("app_1.txt"), "3\n");
    EXPECT_TRUE(m_output.isMutexFree());
}

TEST_F(LineOutputRing, DrainOfNothingOpensNothing)
{
    useRing();

    m_output.drain();

    EXPECT_NE(access(m_folder.file("app_0.txt").c_str(), F_OK), 0);
}

TEST_F(LineOutputRing, DrainGivesUpWhenTheFileCannotBeOpened)
{
    useRing();
    makeFolderInPlaceOf("app_0.txt");
    print("waiting\n");

    testing::internal::CaptureStderr();
    m_output.drain();

    EXPECT_EQ(testing::internal::GetCapturedStderr(), cannotOpen("app_0.txt"));
    EXPECT_FALSE(m_output.areAllMsgFlushed());
    EXPECT_TRUE(m_output.isMutexFree());
}

TEST_F(LineOutputRing, DrainGivesUpWhenTheNextFileCannotBeOpened)
{
    m_output.setMaxLinesPerFile(1);
    useRing();
    makeFolderInPlaceOf("app_1.txt");
    print("1\n2\n");

    testing::internal::CaptureStderr();
    m_output.drain();

    EXPECT_EQ(
        testing::internal::GetCapturedStderr(), cannotOpen("app_1.txt") + cannotOpen("app_1.txt"));
    EXPECT_EQ(m_folder.read("app_0.txt"), "1\n");
    EXPECT_TRUE(m_output.isMutexFree());
}

TEST_F(LineOutputRing, DrainGivesUpWhenTheMutexIsNeverReleased)
{
    useRing();
    print("waiting\n");
    m_output.mutex().acquire();

    std::thread([this] { m_output.drain(); }).join();
    m_output.mutex().release();

    EXPECT_FALSE(m_output.areAllMsgFlushed());
}

TEST_F(LineOutputRing, DrainLeavesLinesThatNoFileTakes)
{
    useRing();
    print("waiting\n");
    m_output.SetFileName("msvc");

    m_output.drain();

    EXPECT_FALSE(m_output.areAllMsgFlushed());
    EXPECT_TRUE(m_output.isMutexFree());
}
