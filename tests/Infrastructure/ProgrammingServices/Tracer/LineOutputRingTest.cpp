#include "LineOutputFixture.h"

#include <string>

#include <unistd.h>

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

TEST_F(LineOutputRing, WritesTheLinesThatWereQueuedBeforeItsNameWasSet)
{
    print("early\n");

    useRing();
    printAndWrite("late\n");

    EXPECT_EQ(m_folder.read("app_0.txt"), "early\nlate\n");
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

TEST_F(LineOutputRing, GoesOnInAFileThatABackupHasGivenASecondName)
{
    addOldFile("app_0.txt", "old\n");
    ASSERT_EQ(link(m_folder.file("app_0.txt").c_str(), m_folder.file("backup").c_str()), 0);
    useRing();

    printAndWrite("new\n");

    EXPECT_EQ(m_folder.read("backup"), "old\nnew\n");
    EXPECT_TRUE(m_output.isMutexFree());
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
    m_output.setMaxLinesPerFile(3);
    addOldFile("app_0.txt", "old 0\n");
    addOldFile("app_1.txt", "");
    addOldFile("app_2.txt", "old 2\nold 2\n");

    useRing();
    printAndWrite("new\nnew\nnext\n");

    EXPECT_EQ(m_folder.read("app_0.txt"), "old 0\nnew\nnew\n") << "its own lines are counted";
    EXPECT_EQ(m_folder.read("app_1.txt"), "next\n");
    EXPECT_EQ(m_folder.read("app_2.txt"), "old 2\nold 2\n");
}

TEST_F(LineOutputRing, StartsANewRingAtItsFirstFileWhereverTheFormerOneStood)
{
    addOldFile("former_0.txt", "old\n");
    addOldFile("former_1.txt", "old\n");
    m_output.SetFileName(m_folder.file("former"));

    useRing();

    EXPECT_EQ(m_output.getCurrentFileName(), m_folder.file("app_0.txt"));
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

TEST_F(LineOutputRing, KeepsItsLineCountWhileTheConsoleIsTheOutput)
{
    m_output.setMaxLinesPerFile(3);
    m_output.SetFileName(m_folder.file("former"));
    printAndWrite("1\n2\n");

    m_output.SetFileName("console");
    useRing();
    printAndWrite("3\n");

    EXPECT_EQ(m_output.getCurrentFileName(), m_folder.file("app_1.txt"));
}

TEST_F(LineOutputRing, KeepsItsWishToEmptyTheFileWhileTheConsoleIsTheOutput)
{
    m_folder.write("app_0.txt", "old\n");
    m_output.SetFileName(m_folder.file("former"));

    m_output.SetFileName("console");
    useRing();
    printAndWrite("new\n");

    EXPECT_EQ(m_folder.read("app_0.txt"), "new\n");
}

TEST_F(LineOutputRing, KeepsItsIndexWhileTheConsoleIsTheOutput)
{
    addOldFile("app_0.txt", "old\n");
    addOldFile("app_1.txt", "old\n");
    useRing();

    m_output.SetFileName("console");
    m_output.UpdateFileName();

    EXPECT_EQ(m_output.getCurrentFileName(), "console_1.txt");
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

TEST_F(LineOutputRing, TakesTheNextFileAfterEachLineWhenTheMaximumOfLinesIsZero)
{
    m_output.setMaxLinesPerFile(0);
    useRing();

    printAndWrite("1\n2\n");

    EXPECT_EQ(m_folder.read("app_0.txt"), "1\n");
    EXPECT_EQ(m_folder.read("app_1.txt"), "2\n");
    EXPECT_EQ(m_output.getCurrentFileName(), m_folder.file("app_2.txt"));
}

TEST_F(LineOutputRing, HasTheFirstFileAloneWhenTheMaximumOfFilesIsZero)
{
    m_output.setSynchronous(true);
    m_output.setMaxLinesPerFile(2);
    m_output.setMaxFiles(0);
    addOldFile("app_0.txt", "old\n");
    addOldFile("app_1.txt", "old\n");
    useRing();

    print("2\n3\n");

    EXPECT_EQ(m_folder.read("app_0.txt"), "3\n");
    EXPECT_EQ(m_folder.read("app_1.txt"), "old\n");
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

TEST_F(LineOutputRing, CountsLostLinesToo)
{
    m_output.setMaxLinesPerFile(2);
    useRing();
    printAndWrite("1\n2\nlost\n");

    printAndWrite("4\n5\n");

    EXPECT_EQ(m_folder.read("app_1.txt"), "4\n");
    EXPECT_EQ(m_folder.read("app_2.txt"), "5\n");
}

TEST_F(LineOutputRing, EmptiesAnOlderFileOfTheRingOnlyInTheNextPass)
{
    m_folder.write("app_1.txt", "old\n");
    m_output.setMaxLinesPerFile(1);
    useRing();

    printAndWrite("1\n");
    EXPECT_EQ(m_folder.read("app_1.txt"), "old\n");
    printAndWrite("2\n");

    EXPECT_EQ(m_folder.read("app_1.txt"), "2\n");
}

TEST_F(LineOutputRing, IsSearchedAmongTheFilesKnownWhenItsNameIsSet)
{
    for (int index = 0; index < 15; ++index)
        addOldFile(("app_" + std::to_string(index) + ".txt").c_str(), "old\n");

    useRing();
    m_output.setMaxFiles(15);

    EXPECT_EQ(m_output.getCurrentFileName(), m_folder.file("app_0.txt")) << "behind the tenth";
}

TEST_F(LineOutputRing, ReplacesTheConsoleByALaterName)
{
    m_output.SetFileName("console");

    useRing();
    printAndWrite("1\n");

    EXPECT_EQ(m_folder.read("app_0.txt"), "1\n");
}
