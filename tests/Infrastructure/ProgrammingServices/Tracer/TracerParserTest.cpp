#include "TracerParser.h"

#include "TemporaryFolder.h"
#include "Tracer.h"
#include "TracerOptions.h"

#include <functional>
#include <ostream>

#include <gtest/gtest.h>

namespace {

class TracerParserTest : public testing::Test {
protected:
    TracerParserTest() { Tracer::SetInstance(&m_tracer); }

    static bool parse(std::string content)
    {
        TracerScanner scanner(std::move(content));
        return TracerParser(scanner).parse();
    }

    Tracer m_tracer;
};

} // namespace

TEST_F(TracerParserTest, SwitchesOn)
{
    EXPECT_TRUE(parse("TRACE_ON\n"));

    EXPECT_TRUE(m_tracer.isActive());
}

TEST_F(TracerParserTest, SwitchesOff)
{
    m_tracer.setActive(true);

    EXPECT_TRUE(parse("TRACE_OFF\n"));

    EXPECT_FALSE(m_tracer.isActive());
}

struct OptionCase {
    std::string command;
    std::function<bool(Tracer&)> isSet;

    friend void PrintTo(const OptionCase& row, std::ostream* out) { *out << row.command; }
};

/// Each command with the look at the tracer that tells whether it acted.
class TracerParserOption : public TracerParserTest,
                           public testing::WithParamInterface<OptionCase> {};

TEST_P(TracerParserOption, ActsBehindTraceOn)
{
    ASSERT_FALSE(GetParam().isSet(m_tracer));

    EXPECT_TRUE(parse("TRACE_ON\n" + GetParam().command + "\n"));

    EXPECT_TRUE(GetParam().isSet(m_tracer));
}

TEST_P(TracerParserOption, IsIgnoredBeforeTraceOn)
{
    EXPECT_TRUE(parse(GetParam().command + "\nTRACE_ON\n"));

    EXPECT_TRUE(m_tracer.isActive());
    EXPECT_FALSE(GetParam().isSet(m_tracer));
}

TEST_P(TracerParserOption, IsIgnoredBehindTraceOff)
{
    EXPECT_TRUE(parse("TRACE_ON\nTRACE_OFF\n" + GetParam().command + "\n"));

    EXPECT_FALSE(GetParam().isSet(m_tracer));
}

INSTANTIATE_TEST_SUITE_P(
    Commands, TracerParserOption,
    testing::Values(
        OptionCase{"TRACE_INDENT_WITH_MARK", [](Tracer& tracer) { return tracer.getTreeIndent(); }},
        OptionCase{"TRACE_FULL_INDENT", [](Tracer& tracer) { return tracer.getIndentHidden(); }},
        OptionCase{"TRACE_CALL_EXIT", [](Tracer& tracer) { return tracer.getPrintExit(); }},
        OptionCase{"TRACE_CLOCK", [](Tracer& tracer) { return tracer.getPrintTime(); }},
        OptionCase{"TRACE_OBJECT_COUNT", [](Tracer& tracer) { return tracer.getPrintObjects(); }},
        OptionCase{"TRACE_MUST_FLUSH", [](Tracer& tracer) { return tracer.isSynchronous(); }},
        OptionCase{
            "TRACE_THE_THREAD Ma*",
            [](Tracer& tracer) { return tracer.isThreadPermittedToPrint("Main"); }},
        OptionCase{
            "TRACE_THE_CALL *::run",
            [](Tracer& tracer) { return tracer.isCallPermittedToPrint("Thing::run"); }},
        OptionCase{
            "TRACE_THE_CALL -Thing*",
            [](Tracer& tracer) { return tracer.isCallForbiddenToPrint("Thing::run"); }},
        OptionCase{
            "TRACE_SET_FILE_NAME console",
            [](Tracer& tracer) { return tracer.getCurrentFileName() == "console"; }},
        OptionCase{
            "TRACE_SET_MAX_LINES 5000",
            [](Tracer& tracer) { return tracer.getMaxLinesPerFile() == 5000; }},
        OptionCase{
            "TRACE_SET_MAX_FILES 2147483647",
            [](Tracer& tracer) { return tracer.getMaxFiles() == 2147483647; }},
        OptionCase{
            "TRACE_SET_MAX_LINES 0",
            [](Tracer& tracer) { return tracer.getMaxLinesPerFile() == 0; }},
        OptionCase{
            "TRACE_SET_MAX_FILES 0", [](Tracer& tracer) { return tracer.getMaxFiles() == 0; }},
        OptionCase{"TRACE_SET_MSG_FILTER TRACE_ERROR TRACE_WARNING", [](Tracer& tracer) {
                       return tracer.getMsgTypeMask() == 6;
                   }}));

TEST_F(TracerParserTest, SetsThePathOfTheRing)
{
    const TemporaryFolder folder;

    EXPECT_TRUE(parse("TRACE_ON\nTRACE_SET_FILE_NAME " + folder.file("app") + "\n"));

    EXPECT_EQ(m_tracer.getCurrentFileName(), folder.file("app_0.txt"));
}

struct TypeWordCase {
    std::string word;
    std::uint32_t bit;

    friend void PrintTo(const TypeWordCase& row, std::ostream* out) { *out << row.word; }
};

class TracerParserWord : public TracerParserTest,
                         public testing::WithParamInterface<TypeWordCase> {};

TEST_P(TracerParserWord, AddsItsBit)
{
    EXPECT_TRUE(parse("TRACE_ON\nTRACE_SET_MSG_FILTER " + GetParam().word + "\n"));

    EXPECT_EQ(m_tracer.getMsgTypeMask(), GetParam().bit);
}

INSTANTIATE_TEST_SUITE_P(
    Words, TracerParserWord,
    testing::Values(
        TypeWordCase{"TRACE_DEBUG", 1}, TypeWordCase{"TRACE_ERROR", 2},
        TypeWordCase{"TRACE_WARNING", 4}, TypeWordCase{"TRACE_LEVEL_0", 8},
        TypeWordCase{"TRACE_LEVEL_1", 16}, TypeWordCase{"TRACE_LEVEL_2", 32},
        TypeWordCase{"TRACE_LEVEL_3", 64}, TypeWordCase{"TRACE_LEVEL_4", 128},
        TypeWordCase{"TRACE_LEVEL_5", 256}));

TEST_F(TracerParserTest, OnlyAddsToTheMask)
{
    EXPECT_TRUE(parse("TRACE_ON\n"
                      "TRACE_SET_MSG_FILTER TRACE_ERROR\n"
                      "TRACE_SET_MSG_FILTER TRACE_LEVEL_5\n"));

    EXPECT_EQ(m_tracer.getMsgTypeMask(), 258U);
}

TEST_F(TracerParserTest, TracesAllButWhatIsForbidden)
{
    EXPECT_TRUE(parse("TRACE_ON\n"
                      "TRACE_THE_THREAD *\n"
                      "TRACE_THE_CALL *\n"
                      "TRACE_THE_CALL -Dictionary*\n"));

    EXPECT_TRUE(m_tracer.isThreadPermittedToPrint("Main"));
    EXPECT_TRUE(m_tracer.isCallPermittedToPrint("Item::constructor"));
    EXPECT_FALSE(m_tracer.isCallForbiddenToPrint("Item::constructor"));
    EXPECT_TRUE(m_tracer.isCallForbiddenToPrint("Dictionary::constructor"));
}

class TracerParserBufferFormat : public TracerParserTest,
                                 public testing::WithParamInterface<std::string> {};

TEST_P(TracerParserBufferFormat, IsAcceptedAndHasNoEffect)
{
    Tracer switchedOn;
    switchedOn.setActive(true);

    EXPECT_TRUE(parse(GetParam() + "\nTRACE_ON\n" + GetParam() + "\n"));

    EXPECT_EQ(optionsOf(m_tracer), optionsOf(switchedOn));
}

INSTANTIATE_TEST_SUITE_P(
    Commands, TracerParserBufferFormat,
    testing::Values(
        "TRACE_SET_BUFFER_FORMAT_HEX", "TRACE_SET_BUFFER_FORMAT_DEC",
        "TRACE_SET_BUFFER_FORMAT_CHR"));

TEST_F(TracerParserTest, ReportsAnErrorWhileTracingIsOffToo)
{
    testing::internal::CaptureStderr();
    const bool parsed = parse("TRACE_CLOCK\nTRACE_SET_MAX_LINES many\nTRACE_ON\n");

    EXPECT_FALSE(parsed);
    EXPECT_EQ(
        testing::internal::GetCapturedStderr(), "syntax error at line 2 of tracer config file\n");
    EXPECT_FALSE(m_tracer.isActive());
}

TEST_F(TracerParserTest, StopsAtASyntaxErrorAndKeepsWhatWasApplied)
{
    testing::internal::CaptureStderr();
    const bool parsed = parse("TRACE_ON\n"
                              "TRACE_CLOCK\n"
                              "TRACE_SET_MSG_FILTER TRACE_ERROR TRACE_NONE\n"
                              "TRACE_OFF\n");

    EXPECT_FALSE(parsed);
    EXPECT_EQ(
        testing::internal::GetCapturedStderr(), "syntax error at line 3 of tracer config file\n");
    EXPECT_TRUE(m_tracer.isActive());
    EXPECT_TRUE(m_tracer.getPrintTime());
    EXPECT_EQ(m_tracer.getMsgTypeMask(), 0U);
}

class TracerParserWrongLine : public TracerParserTest,
                              public testing::WithParamInterface<std::string> {};

TEST_P(TracerParserWrongLine, IsASyntaxError)
{
    testing::internal::CaptureStderr();
    const bool parsed = parse("TRACE_ON\n" + GetParam() + "\n");

    EXPECT_FALSE(parsed);
    EXPECT_EQ(
        testing::internal::GetCapturedStderr(), "syntax error at line 2 of tracer config file\n");
}

INSTANTIATE_TEST_SUITE_P(
    Lines, TracerParserWrongLine,
    testing::Values(
        "TRACE_TOAST", "trace_on", "LOG_ON", "please TRACE_ON", "TRACE_ON 1", "TRACE_OFF 1",
        "TRACE_INDENT_WITH_MARK 1", "TRACE_FULL_INDENT 1", "TRACE_CALL_EXIT 1", "TRACE_CLOCK 1",
        "TRACE_OBJECT_COUNT 1", "TRACE_MUST_FLUSH 1", "TRACE_THE_THREAD", "TRACE_THE_THREAD a b",
        "TRACE_THE_CALL", "TRACE_THE_CALL a b", "TRACE_SET_FILE_NAME", "TRACE_SET_FILE_NAME a b",
        "TRACE_SET_MAX_LINES", "TRACE_SET_MAX_LINES -5", "TRACE_SET_MAX_FILES",
        "TRACE_SET_MAX_FILES 4294967296", "TRACE_SET_MSG_FILTER", "TRACE_SET_MSG_FILTER LOG_ERROR",
        "TRACE_ERROR", "TRACE_SET_BUFFER_FORMAT_HEX 1", "TRACE_SET_BUFFER_FORMAT_OCT"));

TEST(TracerParser, IgnoresCommandsWhenNoTracerIsPublished)
{
    TracerScanner scanner("TRACE_ON\nTRACE_CLOCK\nTRACE_SET_FILE_NAME console\nTRACE_OFF\n");

    EXPECT_TRUE(TracerParser(scanner).parse());
}
