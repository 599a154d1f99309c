#include "JoinedOutputs.h"
#include "Logger.h"
#include "LoggerConfigFileParser.h"
#include "ProcessThreads.h"
#include "TemporaryFolder.h"
#include "Waiting.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

namespace {

const std::string noFileName = "please call Logger_SET_FILE_NAME(fileName)\n";

class LoggerConfigFile : public testing::Test {
protected:
    LoggerConfigFile()
    {
        // The child processes of the exit tests must not inherit a log's background thread.
        GTEST_FLAG_SET(death_test_style, "threadsafe");
        Logger::SetInstance(&m_logger);
        m_logger.SetFolderName(m_folder.path() + "/");
    }

    void read(const std::string& content)
    {
        m_logger.ReadConfigFile(m_folder.write("logger.cfg", content).c_str());
    }

    /// The text on standard error while the file is read.
    std::string errorsOf(const std::string& file)
    {
        testing::internal::CaptureStderr();
        m_logger.ReadConfigFile(file.c_str());
        return testing::internal::GetCapturedStderr();
    }

    const TemporaryFolder m_folder;
    Logger m_logger;
};

} // namespace

TEST_F(LoggerConfigFile, AppliesEveryCommand)
{
    read("# the whole set\n"
         "\n"
         "LOG_SET_MAX_FILES 3\n"
         "LOG_SET_MAX_LINES 20\n"
         "LOG_CLOCK\n"
         "LOG_MUST_FLUSH\n"
         "LOG_SET_FILE_NAME app\n"
         "LOG_SET_MSG_FILTER LOG_ERROR LOG_LEVEL_0\n"
         "LOG_ON\n");

    EXPECT_TRUE(m_logger.isActive());
    EXPECT_TRUE(m_logger.printsTime());
    EXPECT_TRUE(m_logger.isSynchronous());
    EXPECT_EQ(m_logger.getLevelMask(), 10U);
    EXPECT_EQ(m_logger.getMaxFiles(), 3);
    EXPECT_EQ(m_logger.getMaxLinesPerFile(), 20);
    EXPECT_EQ(m_logger.getCurrentFileName(), m_folder.file("app_0.txt"));
}

TEST_F(LoggerConfigFile, StartsTheBackgroundThreadWhenItSwitchesOn)
{
    read("LOG_SET_FILE_NAME app\nLOG_ON\n");
    m_logger.PrintMsg(LoggerMsgType::LEVEL_0, "one");

    waitUntilWritten(m_logger);

    EXPECT_EQ(m_folder.read("app_0.txt"), "[LEVEL_0] one\n");
}

TEST_F(LoggerConfigFile, LeavesTheDefaultsWhenItIsEmpty)
{
    read("");

    EXPECT_FALSE(m_logger.isActive());
}

TEST_F(LoggerConfigFile, NeedsNoFileNameWhileLoggingIsOff)
{
    read("LOG_ON\nLOG_OFF\n");

    EXPECT_FALSE(m_logger.isActive());
}

TEST_F(LoggerConfigFile, LeavesLoggingOffWhenOnLacksItsEndOfLine)
{
    read("LOG_SET_FILE_NAME app\nLOG_ON");

    EXPECT_FALSE(m_logger.isActive());
}

TEST_F(LoggerConfigFile, EndsTheProcessWhenItSwitchesOnWithoutAFileName)
{
    EXPECT_EXIT(
        {
            joinOutputs();
            read("LOG_ON\n");
        },
        testing::ExitedWithCode(1), testing::Eq(noFileName));
}

TEST_F(LoggerConfigFile, EndsTheProcessWithoutAFileNameAlsoWhenSynchronous)
{
    EXPECT_EXIT(
        {
            joinOutputs();
            read("LOG_MUST_FLUSH\nLOG_ON\n");
        },
        testing::ExitedWithCode(1), testing::Eq(noFileName));
}

TEST_F(LoggerConfigFile, EndsTheProcessWhenAnErrorStandsBeforeTheFileName)
{
    EXPECT_EXIT(
        {
            joinOutputs();
            read("LOG_ON\nwrong\nLOG_SET_FILE_NAME app\n");
        },
        testing::ExitedWithCode(1),
        testing::Eq("syntax error at line 2 of log config file\n" + noFileName));
}

TEST_F(LoggerConfigFile, KeepsWhatStandsBeforeAnError)
{
    const std::string file = m_folder.write(
        "logger.cfg",
        "LOG_SET_FILE_NAME app\nLOG_MUST_FLUSH\nLOG_ON\n\n# x\nLOG_CLOCK 1\nLOG_OFF\n");

    EXPECT_EQ(errorsOf(file), "syntax error at line 6 of log config file\n");

    EXPECT_TRUE(m_logger.isActive());
    EXPECT_FALSE(m_logger.printsTime());
}

TEST_F(LoggerConfigFile, StartsTheBackgroundThreadAlsoWhenAnErrorStandsBehindTheFileName)
{
    const std::string file =
        m_folder.write("logger.cfg", "LOG_ON\nLOG_SET_FILE_NAME app\nwrong\nLOG_OFF\n");

    EXPECT_EQ(errorsOf(file), "syntax error at line 3 of log config file\n");
    m_logger.PrintMsg(LoggerMsgType::LEVEL_0, "one");
    waitUntilWritten(m_logger);

    EXPECT_EQ(m_folder.read("app_0.txt"), "[LEVEL_0] one\n");
}

TEST_F(LoggerConfigFile, WarnsWhenItIsMissing)
{
    const std::string file = m_folder.file("absent.cfg");

    EXPECT_EQ(errorsOf(file), "Warning: cannot open log configuration file \"" + file + "\"\n");

    EXPECT_FALSE(m_logger.isActive());
}

TEST_F(LoggerConfigFile, WarnsWhenItIsAFolder)
{
    EXPECT_EQ(
        errorsOf(m_folder.path()),
        "Warning: cannot open log configuration file \"" + m_folder.path() + "\"\n");
}

TEST_F(LoggerConfigFile, WarnsWhenItIsAFifo)
{
    const std::string fifo = m_folder.file("fifo");
    ASSERT_EQ(mkfifo(fifo.c_str(), 0600), 0);

    EXPECT_EQ(errorsOf(fifo), "Warning: cannot open log configuration file \"" + fifo + "\"\n");
}

TEST_F(LoggerConfigFile, IsASyntaxErrorWhenItIsBinary)
{
    const std::string file = m_folder.write(
        "logger.cfg", std::string(
                          "\x7F"
                          "ELF\0\0\n\xFF\n",
                          9));

    EXPECT_EQ(errorsOf(file), "syntax error at line 1 of log config file\n");
}

TEST_F(LoggerConfigFile, ActsOnThePublishedLogAlone)
{
    Logger other;
    const std::ptrdiff_t before = threadsOfTheProcess();

    other.ReadConfigFile(m_folder.write("logger.cfg", "LOG_SET_FILE_NAME app\nLOG_ON\n").c_str());

    EXPECT_FALSE(other.isActive());
    EXPECT_TRUE(m_logger.isActive());
    EXPECT_EQ(threadsOfTheProcess(), before) << "the log that reads stays inactive";
}

TEST_F(LoggerConfigFile, IsParsedWithoutInitializingTheLog)
{
    const std::string file = m_folder.write("logger.cfg", "LOG_ON\n");

    EXPECT_TRUE(LoggerConfigFileParser(file.c_str()).parse());

    EXPECT_TRUE(m_logger.isActive());
}

TEST_F(LoggerConfigFile, IsDeliveredWithStartUpWarningsAndErrorsSwitchedOn)
{
    EXPECT_EQ(errorsOf(TAV_RESOURCES "/logger.cfg"), "");

    EXPECT_TRUE(m_logger.isActive());
    EXPECT_EQ(m_logger.getLevelMask(), 14U);
    EXPECT_EQ(m_logger.getMaxFiles(), 10);
    EXPECT_EQ(m_logger.getMaxLinesPerFile(), 100000);
    EXPECT_EQ(m_logger.getCurrentFileName(), m_folder.file("TavConfiguration_log_0.txt"));
}
