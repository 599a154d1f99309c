#include "CrashReport.h"
#include "FileContent.h"
#include "JoinedOutputs.h"
#include "TemporaryFolder.h"
#include "Tracer.h"
#include "TracerConfigFileParser.h"
#include "Waiting.h"

#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

namespace {

const std::string noFileName = "please call TRACE_SET_FILE_NAME(\"baseFileName\")\n";

class TracerConfigFile : public testing::Test {
protected:
    TracerConfigFile()
    {
        // The child processes of the exit tests must not inherit a tracer's background thread.
        GTEST_FLAG_SET(death_test_style, "threadsafe");
        Tracer::SetInstance(&m_tracer);
        m_tracer.SetFolderName(m_folder.path() + "/");
    }

    void read(const std::string& content)
    {
        m_tracer.ReadConfigFile(m_folder.write("tracer.cfg", content).c_str());
    }

    /// The text on standard error while the file is read.
    std::string errorsOf(const std::string& file)
    {
        testing::internal::CaptureStderr();
        m_tracer.ReadConfigFile(file.c_str());
        return testing::internal::GetCapturedStderr();
    }

    const TemporaryFolder m_folder;
    Tracer m_tracer;
};

} // namespace

TEST_F(TracerConfigFile, AppliesItsCommandsAndInitializesTheOutput)
{
    read("TRACE_ON\nTRACE_MUST_FLUSH\nTRACE_SET_FILE_NAME app\n");
    m_tracer.PrintString("line\n");

    EXPECT_TRUE(m_tracer.isActive());
    EXPECT_EQ(m_folder.read("app_0.txt"), "line\n");
}

TEST_F(TracerConfigFile, StartsTheBackgroundThreadWhenItSwitchesOn)
{
    read("TRACE_ON\nTRACE_SET_FILE_NAME app\n");
    m_tracer.PrintString("line\n");

    waitUntilWritten(m_tracer);

    EXPECT_EQ(m_folder.read("app_0.txt"), "line\n");
}

TEST_F(TracerConfigFile, LeavesTracingOffWhenItIsEmpty)
{
    read("");

    EXPECT_FALSE(m_tracer.isActive());
}

TEST_F(TracerConfigFile, LeavesTracingOffWhenOnLacksItsEndOfLine)
{
    read("TRACE_ON");

    EXPECT_FALSE(m_tracer.isActive());
}

TEST_F(TracerConfigFile, NeedsNoFileNameWhileTracingIsOff)
{
    read("TRACE_ON\nTRACE_OFF\n");

    EXPECT_FALSE(m_tracer.isActive());
}

TEST_F(TracerConfigFile, EndsTheProcessWhenItSwitchesOnWithoutAFileName)
{
    EXPECT_EXIT(
        {
            joinOutputs();
            read("TRACE_ON\n");
        },
        testing::ExitedWithCode(1), testing::Eq(noFileName));
}

TEST_F(TracerConfigFile, EndsTheProcessWhenTheFileNameStandsBeforeTraceOn)
{
    EXPECT_EXIT(
        {
            joinOutputs();
            read("TRACE_SET_FILE_NAME app\nTRACE_ON\n");
        },
        testing::ExitedWithCode(1), testing::Eq(noFileName));
}

TEST_F(TracerConfigFile, EndsTheProcessWithoutAFileNameAlsoWhenSynchronous)
{
    EXPECT_EXIT(
        {
            joinOutputs();
            read("TRACE_ON\nTRACE_MUST_FLUSH\n");
        },
        testing::ExitedWithCode(1), testing::Eq(noFileName));
}

TEST_F(TracerConfigFile, EndsTheProcessWhenAnErrorStandsBeforeTheFileName)
{
    EXPECT_EXIT(
        {
            joinOutputs();
            read("TRACE_ON\nwrong\nTRACE_SET_FILE_NAME app\n");
        },
        testing::ExitedWithCode(1),
        testing::Eq("syntax error at line 2 of tracer config file\n" + noFileName));
}

TEST_F(TracerConfigFile, StartsTheBackgroundThreadAlsoWhenAnErrorStandsBehindTheFileName)
{
    const std::string file =
        m_folder.write("tracer.cfg", "TRACE_ON\nTRACE_SET_FILE_NAME app\nwrong\nTRACE_OFF\n");

    EXPECT_EQ(errorsOf(file), "syntax error at line 3 of tracer config file\n");
    m_tracer.PrintString("line\n");
    waitUntilWritten(m_tracer);

    EXPECT_EQ(m_folder.read("app_0.txt"), "line\n");
}

TEST_F(TracerConfigFile, WarnsWhenItIsMissing)
{
    const std::string file = m_folder.file("absent.cfg");

    EXPECT_EQ(errorsOf(file), "Warning: cannot open tracer configuration file \"" + file + "\"\n");

    EXPECT_FALSE(m_tracer.isActive());
}

TEST_F(TracerConfigFile, WarnsWhenItIsAFolder)
{
    EXPECT_EQ(
        errorsOf(m_folder.path()),
        "Warning: cannot open tracer configuration file \"" + m_folder.path() + "\"\n");
}

TEST_F(TracerConfigFile, WarnsWhenItIsAFifo)
{
    const std::string fifo = m_folder.file("fifo");
    ASSERT_EQ(mkfifo(fifo.c_str(), 0600), 0);

    EXPECT_EQ(errorsOf(fifo), "Warning: cannot open tracer configuration file \"" + fifo + "\"\n");
}

TEST_F(TracerConfigFile, TellsTheLineOfAnError)
{
    const std::string file = m_folder.write("tracer.cfg", "# x\n\nTRACE_ON now\n");

    EXPECT_EQ(errorsOf(file), "syntax error at line 3 of tracer config file\n");
    EXPECT_FALSE(m_tracer.isActive());
}

TEST_F(TracerConfigFile, ActsOnThePublishedTracerAlone)
{
    Tracer other;

    other.ReadConfigFile(
        m_folder.write("tracer.cfg", "TRACE_ON\nTRACE_SET_FILE_NAME app\n").c_str());

    EXPECT_FALSE(other.isActive());
    EXPECT_EQ(other.getCurrentFileName(), "");
    EXPECT_TRUE(m_tracer.isActive());
    EXPECT_EQ(m_tracer.getCurrentFileName(), m_folder.file("app_0.txt"));
}

TEST_F(TracerConfigFile, IsParsedWithoutInitializingTheTracer)
{
    const std::string file = m_folder.write("tracer.cfg", "TRACE_ON\n");

    EXPECT_TRUE(TracerConfigFileParser(file.c_str()).parse());

    EXPECT_TRUE(m_tracer.isActive());
}

TEST_F(TracerConfigFile, NeedsAName)
{
    EXPECT_CRASH_REPORT(
        m_tracer.ReadConfigFile(nullptr),
        "REQUIRE VIOLATION : fileName != NULL - In File : "
        "Infrastructure/ProgrammingServices/Tracer/src/Tracer - At Line : <line>");
}

TEST_F(TracerConfigFile, IsDeliveredSwitchedOff)
{
    EXPECT_EQ(errorsOf(TAV_RESOURCES "/tracer.cfg"), "");

    EXPECT_FALSE(m_tracer.isActive());
    EXPECT_EQ(m_tracer.getCurrentFileName(), "");
}

TEST_F(TracerConfigFile, IsDeliveredSoThatOneCharacterSwitchesItOn)
{
    std::string content = contentOf(TAV_RESOURCES "/tracer.cfg");
    const std::size_t position = content.find("\n#TRACE_ON\n");
    ASSERT_NE(position, std::string::npos);

    read(content.erase(position + 1, 1));

    EXPECT_TRUE(m_tracer.isActive());
    EXPECT_EQ(m_tracer.getCurrentFileName(), m_folder.file("TavConfiguration_trace_0.txt"));
    EXPECT_EQ(m_tracer.getMsgTypeMask(), 7U);
    EXPECT_TRUE(m_tracer.isCallPermittedToPrint("TavConfiguration::Main"));
}
