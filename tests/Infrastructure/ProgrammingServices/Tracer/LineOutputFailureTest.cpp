#include "FullDisk.h"
#include "LineOutputFixture.h"

#include <filesystem>
#include <thread>

#include <unistd.h>

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

TEST_F(LineOutputRing, KeepsTheMutexAlsoWhenTheOpenOfASynchronousLineFailed)
{
    m_output.setSynchronous(true);
    useRing();
    makeFolderInPlaceOf("app_0.txt");

    testing::internal::CaptureStderr();
    print("waiting\n");

    EXPECT_EQ(testing::internal::GetCapturedStderr(), cannotOpen("app_0.txt"));
    EXPECT_FALSE(m_output.areAllMsgFlushed());
    EXPECT_FALSE(m_output.isMutexFree());
    m_output.mutex().release();
    EXPECT_TRUE(m_output.isMutexFree());
}

TEST_F(LineOutputRing, DropsAndCountsTheLinesThatAFullDiskDoesNotTake)
{
    const std::string line = std::string(100000, 'x') + "\n"; // more than a stream keeps back
    m_output.setMaxLinesPerFile(2);
    useRing();

    EXPECT_TRUE(onFullDisk(0, [this, &line] {
        printAndWrite(line + line + line);
        return m_output.areAllMsgFlushed() &&
               m_output.getCurrentFileName() == m_folder.file("app_1.txt");
    }));

    EXPECT_EQ(m_folder.read("app_0.txt"), "");
    EXPECT_EQ(m_folder.read("app_1.txt"), "");
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

TEST_F(LineOutputRing, EndsWithLinesPendingForAFileThatIsNoLongerTheOutput)
{
    useRing();
    print("1\n");
    m_output.SetFileName("console");

    m_output.writeAllPending();

    EXPECT_FALSE(m_output.areAllMsgFlushed());
    EXPECT_FALSE(std::filesystem::exists(m_folder.file("app_0.txt")));
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
