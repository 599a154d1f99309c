#include "LoggerParser.h"

#include "Logger.h"
#include "TemporaryFolder.h"

#include <ostream>

#include <gtest/gtest.h>

namespace {

class LoggerParserTest : public testing::Test {
protected:
    LoggerParserTest() { Logger::SetInstance(&m_logger); }

    static bool parse(std::string content)
    {
        LoggerScanner scanner(std::move(content));
        return LoggerParser(scanner).parse();
    }

    Logger m_logger;
};

} // namespace

TEST_F(LoggerParserTest, SwitchesOn)
{
    EXPECT_TRUE(parse("LOG_ON\n"));

    EXPECT_TRUE(m_logger.isActive());
}

TEST_F(LoggerParserTest, SwitchesOff)
{
    m_logger.setActive(true);

    EXPECT_TRUE(parse("LOG_OFF\n"));

    EXPECT_FALSE(m_logger.isActive());
}

TEST_F(LoggerParserTest, SetsTheClock)
{
    EXPECT_TRUE(parse("LOG_CLOCK\n"));

    EXPECT_TRUE(m_logger.printsTime());
}

TEST_F(LoggerParserTest, SetsSynchronousWriting)
{
    EXPECT_TRUE(parse("LOG_MUST_FLUSH\n"));

    EXPECT_TRUE(m_logger.isSynchronous());
}

TEST_F(LoggerParserTest, SetsThePathOfTheRing)
{
    const TemporaryFolder folder;

    EXPECT_TRUE(parse("LOG_SET_FILE_NAME " + folder.file("app") + "\n"));

    EXPECT_EQ(m_logger.getCurrentFileName(), folder.file("app_0.txt"));
}

TEST_F(LoggerParserTest, PlacesABareNameInTheFolder)
{
    const TemporaryFolder folder;
    m_logger.SetFolderName(folder.path() + "/");

    EXPECT_TRUE(parse("LOG_SET_FILE_NAME app\n"));

    EXPECT_EQ(m_logger.getCurrentFileName(), folder.file("app_0.txt"));
}

TEST_F(LoggerParserTest, SetsTheConsole)
{
    EXPECT_TRUE(parse("LOG_SET_FILE_NAME console\n"));

    EXPECT_EQ(m_logger.getCurrentFileName(), "console");
}

TEST_F(LoggerParserTest, SetsTheMaximumOfLines)
{
    EXPECT_TRUE(parse("LOG_SET_MAX_LINES 5000\n"));

    EXPECT_EQ(m_logger.getMaxLinesPerFile(), 5000);
}

TEST_F(LoggerParserTest, SetsTheMaximumOfFiles)
{
    EXPECT_TRUE(parse("LOG_SET_MAX_FILES 2147483647\n"));

    EXPECT_EQ(m_logger.getMaxFiles(), 2147483647);
}

TEST_F(LoggerParserTest, TakesZeroForTheMaxima)
{
    EXPECT_TRUE(parse("LOG_SET_MAX_LINES 0\nLOG_SET_MAX_FILES 0\n"));

    EXPECT_EQ(m_logger.getMaxLinesPerFile(), 0);
    EXPECT_EQ(m_logger.getMaxFiles(), 0);
}

TEST_F(LoggerParserTest, AddsErrorAndLevelZeroToTheMask)
{
    EXPECT_TRUE(parse("LOG_SET_MSG_FILTER LOG_ERROR LOG_LEVEL_0\n"));

    EXPECT_EQ(m_logger.getLevelMask(), 10U);
}

TEST_F(LoggerParserTest, OnlyAddsToTheMask)
{
    EXPECT_TRUE(parse("LOG_SET_MSG_FILTER LOG_ERROR\nLOG_SET_MSG_FILTER LOG_LEVEL_5\n"));

    EXPECT_EQ(m_logger.getLevelMask(), 258U);
}

struct WordCase {
    std::string word;
    std::uint32_t bit;

    friend void PrintTo(const WordCase& row, std::ostream* out) { *out << row.word; }
};

class LoggerParserWord : public LoggerParserTest, public testing::WithParamInterface<WordCase> {};

TEST_P(LoggerParserWord, AddsItsBit)
{
    EXPECT_TRUE(parse("LOG_SET_MSG_FILTER " + GetParam().word + "\n"));

    EXPECT_EQ(m_logger.getLevelMask(), GetParam().bit);
}

INSTANTIATE_TEST_SUITE_P(
    Words, LoggerParserWord,
    testing::Values(
        WordCase{"LOG_DEBUG", 1}, WordCase{"LOG_ERROR", 2}, WordCase{"LOG_WARNING", 4},
        WordCase{"LOG_LEVEL_0", 8}, WordCase{"LOG_LEVEL_1", 16}, WordCase{"LOG_LEVEL_2", 32},
        WordCase{"LOG_LEVEL_3", 64}, WordCase{"LOG_LEVEL_4", 128}, WordCase{"LOG_LEVEL_5", 256}));

TEST_F(LoggerParserTest, CancelsAnEarlierCommandByALaterOne)
{
    EXPECT_TRUE(parse("LOG_ON\nLOG_OFF\nLOG_SET_FILE_NAME msvc\nLOG_SET_FILE_NAME console\n"));

    EXPECT_FALSE(m_logger.isActive());
    EXPECT_EQ(m_logger.getCurrentFileName(), "console");
}

TEST_F(LoggerParserTest, AppliesCommandsWhileLoggingIsOff)
{
    EXPECT_TRUE(parse("LOG_CLOCK\nLOG_SET_MAX_LINES 7\n"));

    EXPECT_TRUE(m_logger.printsTime());
    EXPECT_EQ(m_logger.getMaxLinesPerFile(), 7);
}

TEST_F(LoggerParserTest, ComesTooLateWithTheMaximumOfFilesBehindTheName)
{
    const TemporaryFolder folder;
    for (int index = 0; index <= 11; ++index)
        std::filesystem::last_write_time(
            folder.write("app_" + std::to_string(index) + ".txt", "old\n"), {});
    const std::string name = "LOG_SET_FILE_NAME " + folder.file("app") + "\n";

    EXPECT_TRUE(parse(name + "LOG_SET_MAX_FILES 20\n"));
    const std::string tooLate = m_logger.getCurrentFileName();
    EXPECT_TRUE(parse(name));
    const std::string inTime = m_logger.getCurrentFileName();

    EXPECT_EQ(tooLate, folder.file("app_0.txt"));
    EXPECT_EQ(inTime, folder.file("app_11.txt"));
}

TEST_F(LoggerParserTest, StopsAtASyntaxErrorAndKeepsWhatWasApplied)
{
    testing::internal::CaptureStderr();
    const bool parsed = parse("LOG_CLOCK\nLOG_SET_MSG_FILTER LOG_ERROR LOG_NONE\nLOG_ON\n");

    EXPECT_FALSE(parsed);
    EXPECT_EQ(
        testing::internal::GetCapturedStderr(), "syntax error at line 2 of log config file\n");
    EXPECT_TRUE(m_logger.printsTime());
    EXPECT_EQ(m_logger.getLevelMask(), 0U);
    EXPECT_FALSE(m_logger.isActive());
}

class LoggerParserWrongLine : public LoggerParserTest,
                              public testing::WithParamInterface<std::string> {};

TEST_P(LoggerParserWrongLine, IsASyntaxError)
{
    testing::internal::CaptureStderr();
    const bool parsed = parse(GetParam() + "\n");

    EXPECT_FALSE(parsed);
    EXPECT_EQ(
        testing::internal::GetCapturedStderr(), "syntax error at line 1 of log config file\n");
}

INSTANTIATE_TEST_SUITE_P(
    Lines, LoggerParserWrongLine,
    testing::Values(
        "log_on", "TRACE_ON", "please LOG_ON", "LOG_ON 1", "LOG_OFF 1", "LOG_CLOCK 1",
        "LOG_MUST_FLUSH 1", "LOG_SET_FILE_NAME", "LOG_SET_MAX_LINES many", "LOG_SET_MAX_FILES many",
        "LOG_SET_MSG_FILTER", "LOG_SET_MSG_FILTER TRACE_ERROR"));

TEST(LoggerParser, IgnoresCommandsWhenNoLogIsPublished)
{
    LoggerScanner scanner("LOG_ON\nLOG_OFF\nLOG_CLOCK\nLOG_MUST_FLUSH\nLOG_SET_FILE_NAME console\n"
                          "LOG_SET_MAX_LINES 1\nLOG_SET_MAX_FILES 1\n"
                          "LOG_SET_MSG_FILTER LOG_ERROR\n");

    EXPECT_TRUE(LoggerParser(scanner).parse());
}

TEST(LoggerParser, TellsASyntaxErrorWhenNoLogIsPublished)
{
    LoggerScanner scanner("LOG_ON\nwrong\n");

    testing::internal::CaptureStderr();
    EXPECT_FALSE(LoggerParser(scanner).parse());

    EXPECT_EQ(
        testing::internal::GetCapturedStderr(), "syntax error at line 2 of log config file\n");
}
