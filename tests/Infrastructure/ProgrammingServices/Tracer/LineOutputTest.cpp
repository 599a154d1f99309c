#include "CrashReport.h"
#include "FileSystemManagement.h"
#include "JoinedOutputs.h"
#include "LineOutputFixture.h"

#include <string>

using LineOutputDeathTest = LineOutputTest;

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

TEST_F(LineOutputTest, TakesConsoleAndMsvcInOtherLettersAsFileNames)
{
    m_output.SetFolderName(m_folder.path() + "/");

    m_output.SetFileName("Console");
    EXPECT_EQ(m_output.getCurrentFileName(), m_folder.file("Console_0.txt"));
    m_output.SetFileName("MSVC");
    EXPECT_EQ(m_output.getCurrentFileName(), m_folder.file("MSVC_0.txt"));
}

TEST_F(LineOutputDeathTest, EmptyLineIsAViolation)
{
    EXPECT_CRASH_REPORT(
        m_output.PrintString(""),
        "REQUIRE VIOLATION : !(msg.empty()) - In File : "
        "Infrastructure/ProgrammingServices/Tracer/src/LineOutput - At Line : <line>");
}

TEST_F(LineOutputDeathTest, EndsTheProcessWhenNoFileNameWasSet)
{
    EXPECT_EXIT(
        {
            joinOutputs();
            m_output.Initialize();
        },
        testing::ExitedWithCode(1), testing::Eq("please name a file\n"));
}

TEST_F(LineOutputTest, GoesOnWhenAFileNameWasSet)
{
    m_output.SetFileName("msvc");
    m_output.setSynchronous(true);

    testing::internal::CaptureStdout();
    m_output.Initialize();

    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
}
