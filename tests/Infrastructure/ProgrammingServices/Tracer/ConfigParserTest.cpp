#include "ConfigParser.h"

#include <array>
#include <vector>

#include <gtest/gtest.h>

namespace {

class TestScanner : public ConfigScanner {
public:
    explicit TestScanner(std::string content) : ConfigScanner(std::move(content), "T_") {}
};

/// A facility that records each applied command as one text; published as long as it lives.
class Recorder {
public:
    Recorder() { s_published = this; }
    ~Recorder() { s_published = nullptr; }

    Recorder(const Recorder&) = delete;
    Recorder& operator=(const Recorder&) = delete;

    static Recorder* GetInstance() { return s_published; }

    void record(int command, const std::string& name, std::int32_t number, std::uint32_t mask)
    {
        m_applied.push_back(
            std::to_string(command) + " '" + name + "' " + std::to_string(number) + " " +
            std::to_string(mask));
    }
    const std::vector<std::string>& applied() const { return m_applied; }

private:
    static inline Recorder* s_published = nullptr;

    std::vector<std::string> m_applied;
};

using Parser = ConfigParser<Recorder>;

constexpr auto commands = std::to_array<Parser::Command>({
    {"T_GO", [](Recorder& recorder, ConfigArgument::None) { recorder.record(1, "", 0, 0); }},
    {"T_NAME",
     [](Recorder& recorder, ConfigArgument::Name name) { recorder.record(2, name, 0, 0); }},
    {"T_NUMBER",
     [](Recorder& recorder, ConfigArgument::Number number) { recorder.record(3, "", number, 0); }},
    {"T_MASK",
     [](Recorder& recorder, ConfigArgument::Mask mask) { recorder.record(4, "", 0, mask); }},
});

class TestParser : public Parser {
public:
    explicit TestParser(ConfigScanner& scanner) : Parser(scanner, "test", commands) {}
};

struct Outcome {
    bool result;
    std::vector<std::string> applied;
    std::string errors;
};

Outcome parse(std::string content)
{
    TestScanner scanner(std::move(content));
    const Recorder recorder;
    testing::internal::CaptureStderr();
    const bool result = TestParser(scanner).parse();
    return {result, recorder.applied(), testing::internal::GetCapturedStderr()};
}

} // namespace

TEST(ConfigParser, AppliesEveryCommandInFileOrder)
{
    const Outcome outcome = parse("# all of them\n"
                                  "\n"
                                  "T_NAME a/b#c\n"
                                  "  T_GO\n"
                                  "\tT_NUMBER\t42 \n"
                                  "T_MASK T_ERROR T_LEVEL_0\tT_ERROR\n"
                                  "T_GO\n");

    EXPECT_TRUE(outcome.result);
    EXPECT_EQ(outcome.errors, "");
    EXPECT_EQ(
        outcome.applied, (std::vector<std::string>{
                             "2 'a/b#c' 0 0", "1 '' 0 0", "3 '' 42 0", "4 '' 0 10", "1 '' 0 0"}));
}

TEST(ConfigParser, AppliesNothingOfEmptyContent)
{
    const Outcome outcome = parse("");

    EXPECT_TRUE(outcome.result);
    EXPECT_TRUE(outcome.applied.empty());
    EXPECT_EQ(outcome.errors, "");
}

TEST(ConfigParser, AppliesNothingOfLastLineWithoutEndOfLine)
{
    const Outcome outcome = parse("T_GO\nT_NUMBER 1");

    EXPECT_TRUE(outcome.result);
    EXPECT_EQ(outcome.applied, std::vector<std::string>{"1 '' 0 0"});
}

TEST(ConfigParser, ReportsNoErrorOfLastLineWithoutEndOfLine)
{
    const Outcome outcome = parse("nonsense");

    EXPECT_TRUE(outcome.result);
    EXPECT_EQ(outcome.errors, "");
}

TEST(ConfigParser, SkipsCommentOfAMegabyte)
{
    const Outcome outcome = parse("#" + std::string(1 << 20, '\0') + "\nT_GO\n");

    EXPECT_TRUE(outcome.result);
    EXPECT_EQ(outcome.applied, std::vector<std::string>{"1 '' 0 0"});
}

TEST(ConfigParser, StopsAtFirstErrorAndKeepsCommandsBefore)
{
    const Outcome outcome = parse("T_GO\n\n# x\nT_NUMBER 1 T_GO\nT_GO\nwrong\n");

    EXPECT_FALSE(outcome.result);
    EXPECT_EQ(outcome.applied, std::vector<std::string>{"1 '' 0 0"});
    EXPECT_EQ(outcome.errors, "syntax error at line 4 of test config file\n");
}

class ConfigParserWrongLine : public testing::TestWithParam<std::string> {};

TEST_P(ConfigParserWrongLine, IsASyntaxErrorOfWhichNothingApplies)
{
    const Outcome outcome = parse("T_GO\n" + GetParam() + "\n");

    EXPECT_FALSE(outcome.result);
    EXPECT_EQ(outcome.applied, std::vector<std::string>{"1 '' 0 0"});
    EXPECT_EQ(outcome.errors, "syntax error at line 2 of test config file\n");
}

INSTANTIATE_TEST_SUITE_P(
    Lines, ConfigParserWrongLine,
    testing::Values(
        "T_UNKNOWN", "text T_GO", "T_GO T_GO", "T_GO # comment", " # comment", "T_GO x", "T_GO 1",
        "T_GO\r", "\r", "\x1B", "T_NAME", "T_NAME a b", "T_NUMBER", "T_NUMBER -1", "T_NUMBER +1",
        "T_NUMBER ten", "T_NUMBER 1 2", "T_NUMBER 2147483648", "T_MASK", "T_MASK T_NONE",
        "T_MASK T_ERROR T_NONE", "T_MASK T_ERROR, T_DEBUG", "T_MASK T_ERROR T_GO", "T_ERROR",
        std::string("T_GO\0", 5), std::string("\0", 1),
        "\x7F"
        "ELF\x02\x01\x01"));

TEST(ConfigParser, TakesLineOfAMegabyteAsSyntaxError)
{
    const Outcome outcome = parse("T_GO\nT_GO " + std::string(1 << 20, 'x') + "\nT_GO\n");

    EXPECT_FALSE(outcome.result);
    EXPECT_EQ(outcome.applied, std::vector<std::string>{"1 '' 0 0"});
    EXPECT_EQ(outcome.errors, "syntax error at line 2 of test config file\n");
}

TEST(ConfigParser, TakesCarriageReturnAsPartOfAName)
{
    const Outcome outcome = parse("T_NAME app\r\n");

    EXPECT_TRUE(outcome.result);
    EXPECT_EQ(outcome.applied, std::vector<std::string>{"2 'app\r' 0 0"});
}

TEST(ConfigParser, ReportsFirstLineAsLineOne)
{
    EXPECT_EQ(parse("wrong\n").errors, "syntax error at line 1 of test config file\n");
}
