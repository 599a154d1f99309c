#include "LocalizationFile.h"

#include "MarkedCalls.h"

#include <ostream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

using Entries = LocalizationFile::Entries;

namespace {

struct Line {
    const char* name;
    std::string content;
    Entries entries;

    friend void PrintTo(const Line& row, std::ostream* out) { *out << row.name; }
};

class LocalizationFileLine : public testing::TestWithParam<Line> {};

} // namespace

TEST_P(LocalizationFileLine, Yields)
{
    EXPECT_EQ(LocalizationFile::parse(GetParam().content), GetParam().entries);
}

INSTANTIATE_TEST_SUITE_P(
    Table, LocalizationFileLine,
    testing::ValuesIn(std::vector<Line>{
        {"BlanksAroundTheLine", "  \tKEY=Hello world \t\n", {{"KEY", "Hello world"}}},
        {"BlanksAroundTheSign", "A = b\n", {{"A ", " b"}}},
        {"BackslashN", "KEY=Line1\\nLine2\n", {{"KEY", "Line1\nLine2"}}},
        {"BackslashNInTheKey", "A\\nB=c\n", {{"A\nB", "c"}}},
        {"BackslashNAtTheEndIsNotTrimmed", "KEY=a\\n\n", {{"KEY", "a\n"}}},
        {"OtherBackslashes", "KEY=C:\\temp\\t\\\\ \\N\n", {{"KEY", "C:\\temp\\t\\\\ \\N"}}},
        {"BackslashBeforeTheEscape", "KEY=a\\\\n\n", {{"KEY", "a\\\n"}}},
        {"FurtherEqualsSigns", "KEY=a=b==c\n", {{"KEY", "a=b==c"}}},
        {"EmptyText", "KEY=\n", {{"KEY", ""}}},
        {"EmptyKey", "=text\n", {{"", "text"}}},
        {"NoSign", "# a comment\n", {}},
        {"HashAheadOfAKey", "#KEY=a\n# B = c\n", {{"#KEY", "a"}, {"# B ", " c"}}},
        {"EmptyLines", "\n \n\n", {}},
        {"NoContent", "", {}},
        {"NoLineEndAtTheEnd", "KEY=text", {{"KEY", "text"}}},
        {"TheLastOfOneKey", "KEY=first\nKEY=second\n", {{"KEY", "second"}}},
        {"KeysDifferInCase", "KEY=a\nkey=b\n", {{"KEY", "a"}, {"key", "b"}}},
        {"CarriageReturnAndLineFeed", "A=a\r\nB=b\r\n", {{"A", "a"}, {"B", "b"}}},
        {"CarriageReturn", "A=a\rB=b\r", {{"A", "a"}, {"B", "b"}}},
        {"LineSeparator",
         "A=a\xE2\x80\xA8"
         "B=b",
         {{"A", "a"}, {"B", "b"}}},
        {"ParagraphSeparator",
         "A=a\xE2\x80\xA9"
         "B=b",
         {{"A", "a"}, {"B", "b"}}},
        {"NoBreakSpaceInside", "A=a\xC2\xA0:\n", {{"A", "a\xC2\xA0:"}}},
        {"Nul", std::string("A=a\0b\n", 6), {{"A", std::string("a\0b", 3)}}},
        {"QuotesAndMarkup", "A=\"<b>&amp;%s\"\n", {{"A", "\"<b>&amp;%s\""}}},
    }),
    [](const auto& test) { return std::string(test.param.name); });

TEST(LocalizationFile, KeepsAByteOrderMarkInTheFirstLine)
{
    EXPECT_EQ(LocalizationFile::parse("\xEF\xBB\xBFKEY=a"), (Entries{{"\xEF\xBB\xBFKEY", "a"}}));
}

TEST(LocalizationFile, RefusesWhatIsNotUtf8)
{
    EXPECT_EQ(LocalizationFile::parse("KEY=caf\xE9\n"), std::nullopt);
}

TEST(LocalizationFile, MarksItsParsing)
{
    expectMarked("LocalizationFile::parse", nullptr, [] { LocalizationFile::parse("KEY=a"); });
}
