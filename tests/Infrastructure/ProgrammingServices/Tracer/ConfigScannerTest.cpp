#include "ConfigScanner.h"

#include "TemporaryFolder.h"

#include <array>
#include <ostream>
#include <string_view>

#include <gtest/gtest.h>
#include <sys/stat.h>

namespace {

struct Keyword {
    std::string_view word;
    int command;
};

constexpr std::array keywords{
    Keyword{"T_GO", 1},
    Keyword{"T_GO_FAR", 2},
};

class TestScanner : public ConfigScanner {
public:
    explicit TestScanner(std::string content) : ConfigScanner(std::move(content), "T_") {}

    const Keyword* readKeyword() { return ConfigScanner::readKeyword<Keyword>(keywords); }

    static std::string readTestFile(const std::string& fileName)
    {
        return readFile(fileName.c_str(), "test");
    }
};

/// The number of lines that a scanner sees in the content.
int countLines(std::string content)
{
    TestScanner scanner(std::move(content));
    while (scanner.nextLine()) {
    }
    return scanner.lineNumber();
}

} // namespace

TEST(ConfigScanner, SeesNoLineInEmptyContent)
{
    EXPECT_EQ(countLines(""), 0);
}

TEST(ConfigScanner, CountsEveryEndedLine)
{
    EXPECT_EQ(countLines("T_GO\n\n# comment\nT_GO\n"), 4);
}

TEST(ConfigScanner, DropsLastLineWithoutEndOfLine)
{
    EXPECT_EQ(countLines("T_GO"), 0);
    EXPECT_EQ(countLines("T_GO\nT_GO"), 1);
}

TEST(ConfigScanner, TakesHashInFirstColumnAsComment)
{
    TestScanner scanner("# T_GO\n");

    ASSERT_TRUE(scanner.nextLine());

    EXPECT_TRUE(scanner.isAtEndOfLine());
}

TEST(ConfigScanner, TakesHashBehindBlankAsToken)
{
    TestScanner scanner(" # T_GO\n");

    ASSERT_TRUE(scanner.nextLine());

    EXPECT_FALSE(scanner.isAtEndOfLine());
    EXPECT_EQ(scanner.readKeyword(), nullptr);
}

TEST(ConfigScanner, IgnoresBlanksAndTabsAroundTokens)
{
    TestScanner scanner(" \t T_GO_FAR\t \t12 \t\n");
    std::int32_t number = 0;

    ASSERT_TRUE(scanner.nextLine());
    const Keyword* const keyword = scanner.readKeyword();

    ASSERT_NE(keyword, nullptr);
    EXPECT_EQ(keyword->command, 2);
    EXPECT_TRUE(scanner.readNumber(number));
    EXPECT_EQ(number, 12);
    EXPECT_TRUE(scanner.isAtEndOfLine());
}

TEST(ConfigScanner, TakesLineOfBlanksAsEmpty)
{
    TestScanner scanner(" \t \n");

    ASSERT_TRUE(scanner.nextLine());

    EXPECT_TRUE(scanner.isAtEndOfLine());
}

TEST(ConfigScanner, LeavesUnreadTokensOfALineBehind)
{
    TestScanner scanner("T_GO and more\nT_GO_FAR\n");

    ASSERT_TRUE(scanner.nextLine());
    ASSERT_NE(scanner.readKeyword(), nullptr);
    ASSERT_TRUE(scanner.nextLine());
    const Keyword* const keyword = scanner.readKeyword();

    ASSERT_NE(keyword, nullptr);
    EXPECT_EQ(keyword->command, 2);
}

class ConfigScannerNoKeyword : public testing::TestWithParam<std::string> {};

TEST_P(ConfigScannerNoKeyword, IsRefused)
{
    TestScanner scanner(GetParam() + "\n");

    ASSERT_TRUE(scanner.nextLine());

    EXPECT_EQ(scanner.readKeyword(), nullptr);
}

INSTANTIATE_TEST_SUITE_P(
    Texts, ConfigScannerNoKeyword,
    testing::Values(
        "", "t_go", "T_GOO", "T_G", "T_GO\r", "T_GO,", "\vT_GO", "\fT_GO", "\"T_GO\"", "T_GO12",
        "\xEF\xBB\xBFT_GO", std::string("T_GO\0", 5)));

TEST(ConfigScanner, ReadsNameAsOneRunOfCharactersThatAreNotBlank)
{
    TestScanner scanner("\t/var/log/#a\xC3\xA9-%s\"*\r b\n");
    std::string name;

    ASSERT_TRUE(scanner.nextLine());

    EXPECT_TRUE(scanner.readName(name));
    EXPECT_EQ(name, "/var/log/#a\xC3\xA9-%s\"*\r");
    EXPECT_FALSE(scanner.isAtEndOfLine());
}

TEST(ConfigScanner, ReadsNameOfAMegabyte)
{
    const std::string expected(1 << 20, 'n');
    TestScanner scanner(expected + "\n");
    std::string name;

    ASSERT_TRUE(scanner.nextLine());

    EXPECT_TRUE(scanner.readName(name));
    EXPECT_EQ(name, expected);
}

TEST(ConfigScanner, RefusesMissingName)
{
    TestScanner scanner(" \t\n");
    std::string name;

    ASSERT_TRUE(scanner.nextLine());

    EXPECT_FALSE(scanner.readName(name));
}

TEST(ConfigScanner, RefusesNameWithNul)
{
    TestScanner scanner(std::string("ab\0c\n", 5));
    std::string name;

    ASSERT_TRUE(scanner.nextLine());

    EXPECT_FALSE(scanner.readName(name));
}

TEST(ConfigScanner, RefusesKeywordAndNumberOfAMegabyte)
{
    TestScanner scanner(std::string(1 << 20, 'T') + "\n" + std::string(1 << 20, '9') + "\n");
    std::int32_t number = 0;

    ASSERT_TRUE(scanner.nextLine());
    EXPECT_EQ(scanner.readKeyword(), nullptr);
    ASSERT_TRUE(scanner.nextLine());
    EXPECT_FALSE(scanner.readNumber(number));
}

struct NumberCase {
    std::string text;
    std::int32_t number;

    friend void PrintTo(const NumberCase& row, std::ostream* out) { *out << row.text; }
};

class ConfigScannerNumber : public testing::TestWithParam<NumberCase> {};

TEST_P(ConfigScannerNumber, IsRead)
{
    TestScanner scanner(GetParam().text + "\n");
    std::int32_t number = -1;

    ASSERT_TRUE(scanner.nextLine());

    EXPECT_TRUE(scanner.readNumber(number));
    EXPECT_EQ(number, GetParam().number);
}

INSTANTIATE_TEST_SUITE_P(
    Texts, ConfigScannerNumber,
    testing::Values(
        NumberCase{"0", 0}, NumberCase{"7", 7}, NumberCase{"007", 7},
        NumberCase{"2147483647", 2147483647}));

class ConfigScannerNoNumber : public testing::TestWithParam<std::string> {};

TEST_P(ConfigScannerNoNumber, IsRefused)
{
    TestScanner scanner(GetParam() + "\n");
    std::int32_t number = 0;

    ASSERT_TRUE(scanner.nextLine());

    EXPECT_FALSE(scanner.readNumber(number));
}

INSTANTIATE_TEST_SUITE_P(
    Texts, ConfigScannerNoNumber,
    testing::Values(
        "", "-1", "+1", "1a", "a1", "0x10", "1.5", "1e3", "12\r", "\xD9\xA1", "2147483648",
        "4294967295", "4294967296", "99999999999999999999", std::string("1\0", 2)));

struct LevelWordCase {
    std::string word;
    std::uint32_t bit;

    friend void PrintTo(const LevelWordCase& row, std::ostream* out) { *out << row.word; }
};

class ConfigScannerLevelWord : public testing::TestWithParam<LevelWordCase> {};

TEST_P(ConfigScannerLevelWord, AddsItsBitToTheMask)
{
    TestScanner scanner(GetParam().word + "\n");
    std::uint32_t mask = 1U << 31;

    ASSERT_TRUE(scanner.nextLine());

    EXPECT_TRUE(scanner.readLevelWord(mask));
    EXPECT_EQ(mask, (1U << 31) | GetParam().bit);
}

INSTANTIATE_TEST_SUITE_P(
    Words, ConfigScannerLevelWord,
    testing::Values(
        LevelWordCase{"T_DEBUG", 1}, LevelWordCase{"T_ERROR", 2}, LevelWordCase{"T_WARNING", 4},
        LevelWordCase{"T_LEVEL_0", 8}, LevelWordCase{"T_LEVEL_1", 16},
        LevelWordCase{"T_LEVEL_2", 32}, LevelWordCase{"T_LEVEL_3", 64},
        LevelWordCase{"T_LEVEL_4", 128}, LevelWordCase{"T_LEVEL_5", 256}));

class ConfigScannerNoLevelWord : public testing::TestWithParam<std::string> {};

TEST_P(ConfigScannerNoLevelWord, LeavesTheMaskAsItWas)
{
    TestScanner scanner(GetParam() + "\n");
    std::uint32_t mask = 5;

    ASSERT_TRUE(scanner.nextLine());

    EXPECT_FALSE(scanner.readLevelWord(mask));
    EXPECT_EQ(mask, 5U);
}

INSTANTIATE_TEST_SUITE_P(
    Texts, ConfigScannerNoLevelWord,
    testing::Values(
        "", "T_", "DEBUG", "X_DEBUG", "LOG_DEBUG", "t_debug", "T_DEBUG,", "T_DEBUG\r", "T_LEVEL_6",
        "T_DEBUGT_ERROR", "T_GO", "1"));

TEST(ConfigScanner, ReadsFileAsItStands)
{
    const TemporaryFolder folder;
    const std::string content("T_GO\r\n\0\xFF T_GO", 13);
    const std::string file = folder.write("test.cfg", content);

    EXPECT_EQ(TestScanner::readTestFile(file), content);
}

TEST(ConfigScanner, ReadsEmptyFileWithoutAWarning)
{
    const TemporaryFolder folder;
    const std::string file = folder.write("test.cfg", "");

    testing::internal::CaptureStderr();
    const std::string content = TestScanner::readTestFile(file);

    EXPECT_EQ(content, "");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

TEST(ConfigScanner, ReadsFileThroughASymbolicLink)
{
    const TemporaryFolder folder;
    folder.write("test.cfg", "T_GO\n");
    std::filesystem::create_symlink("test.cfg", folder.file("link.cfg"));

    EXPECT_EQ(TestScanner::readTestFile(folder.file("link.cfg")), "T_GO\n");
}

TEST(ConfigScanner, WarnsOfFileThatCannotBeOpenedAndReadsNothing)
{
    const TemporaryFolder folder;
    const std::string file = folder.file("absent.cfg");

    testing::internal::CaptureStderr();
    const std::string content = TestScanner::readTestFile(file);

    EXPECT_EQ(content, "");
    EXPECT_EQ(
        testing::internal::GetCapturedStderr(),
        "Warning: cannot open test configuration file \"" + file + "\"\n");
}

TEST(ConfigScanner, TakesFolderAsFileThatCannotBeOpened)
{
    const TemporaryFolder folder;

    testing::internal::CaptureStderr();
    const std::string content = TestScanner::readTestFile(folder.path());

    EXPECT_EQ(content, "");
    EXPECT_EQ(
        testing::internal::GetCapturedStderr(),
        "Warning: cannot open test configuration file \"" + folder.path() + "\"\n");
}

TEST(ConfigScanner, TakesFifoAsFileThatCannotBeOpenedWithoutWaiting)
{
    const TemporaryFolder folder;
    const std::string fifo = folder.file("fifo.cfg");
    ASSERT_EQ(mkfifo(fifo.c_str(), 0600), 0);

    testing::internal::CaptureStderr();
    const std::string content = TestScanner::readTestFile(fifo);

    EXPECT_EQ(content, "");
    EXPECT_EQ(
        testing::internal::GetCapturedStderr(),
        "Warning: cannot open test configuration file \"" + fifo + "\"\n");
}
