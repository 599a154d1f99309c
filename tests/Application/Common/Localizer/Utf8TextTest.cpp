#include "Utf8Text.h"

#include "MarkedCalls.h"

#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

using namespace std::string_view_literals;

namespace {

struct Encoding {
    const char* name;
    std::string_view bytes;
    bool wellFormed;
};

class Utf8TextEncoding : public testing::TestWithParam<Encoding> {};

std::vector<std::string_view> lines(std::string_view text)
{
    std::vector<std::string_view> result;
    while (!text.empty())
        result.push_back(Utf8Text::takeLine(text));
    return result;
}

} // namespace

TEST_P(Utf8TextEncoding, IsJudged)
{
    EXPECT_EQ(Utf8Text::isWellFormed(GetParam().bytes), GetParam().wellFormed);
}

INSTANTIATE_TEST_SUITE_P(
    Table, Utf8TextEncoding,
    testing::ValuesIn(std::vector<Encoding>{
        {"Empty", "", true},
        {"Ascii", "plain", true},
        {"Nul", "a\0b"sv, true},
        {"FirstOfTwo", "\xC2\x80", true},
        {"LastOfTwo", "\xDF\xBF", true},
        {"FirstOfThree", "\xE0\xA0\x80", true},
        {"BeforeSurrogates", "\xED\x9F\xBF", true},
        {"AfterSurrogates", "\xEE\x80\x80", true},
        {"LastOfThree", "\xEF\xBF\xBF", true},
        {"FirstOfFour", "\xF0\x90\x80\x80", true},
        {"LastOfFour", "\xF4\x8F\xBF\xBF", true},
        {"Mixed", "a\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80z", true},
        {"LoneContinuation", "\x80", false},
        {"Latin1", "caf\xE9", false},
        {"Latin1Inside", "caf\xE9 noir", false},
        {"OverlongTwo", "\xC0\x80", false},
        {"OverlongTwoAscii", "\xC1\xBF", false},
        {"OverlongThree", "\xE0\x9F\xBF", false},
        {"OverlongFour", "\xF0\x8F\xBF\xBF", false},
        {"FirstSurrogate", "\xED\xA0\x80", false},
        {"LastSurrogate", "\xED\xBF\xBF", false},
        {"AboveUnicode", "\xF4\x90\x80\x80", false},
        {"LeadF5", "\xF5\x80\x80\x80", false},
        {"LeadFF", "\xFF", false},
        {"CutShortTwo", "\xC2", false},
        {"CutShortThree", "\xE2\x82", false},
        {"CutShortFour", "\xF0\x9F\x98", false},
        {"BadThirdByte", "\xE2\x82z", false},
        {"BadFourthByte", "\xF0\x9F\x98z", false},
        {"Utf16",
         "\xFF\xFE"
         "a\0"sv,
         false},
    }),
    [](const auto& test) { return std::string(test.param.name); });

TEST(Utf8Text, CutsLinesAtEveryTerminator)
{
    EXPECT_EQ(
        lines("a\nb\rc\xE2\x80\xA8"
              "d\xE2\x80\xA9"
              "e"),
        (std::vector<std::string_view>{"a", "b", "c", "d", "e"}));
}

TEST(Utf8Text, CutsLinesNowhereElse)
{
    const std::string_view text = "a\vb\fc\xC2\x85"
                                  "d\x1C"
                                  "e\xE2\x80\xA7"
                                  "f";

    EXPECT_EQ(lines(text), std::vector<std::string_view>{text});
}

TEST(Utf8Text, LeavesAnEmptyLineBetweenCarriageReturnAndLineFeed)
{
    EXPECT_EQ(lines("a\r\nb"), (std::vector<std::string_view>{"a", "", "b"}));
}

TEST(Utf8Text, TakesTheLastLineWithoutTerminator)
{
    std::string_view rest = "last";

    EXPECT_EQ(Utf8Text::takeLine(rest), "last");
    EXPECT_TRUE(rest.empty());
}

TEST(Utf8Text, TrimsUnicodeWhiteSpaceAtBothEndsOnly)
{
    EXPECT_EQ(
        Utf8Text::trim("\t \xC2\xA0\xE1\x9A\x80\xE2\x80\x83 a \xC2\xA0 b\xE3\x80\x80\xE2\x80\xAF"
                       "\xE2\x81\x9F\xC2\x85\v\f\r\n\xE2\x80\xA8\xE2\x80\xA9"),
        "a \xC2\xA0 b");
}

TEST(Utf8Text, TrimsNothingThatOnlyLooksEmpty)
{
    const std::string_view zeroWidthSpaceAndByteOrderMark = "\xE2\x80\x8B\xEF\xBB\xBF";

    EXPECT_EQ(Utf8Text::trim(zeroWidthSpaceAndByteOrderMark), zeroWidthSpaceAndByteOrderMark);
}

TEST(Utf8Text, TrimsWhiteSpaceAloneToNothing)
{
    EXPECT_EQ(Utf8Text::trim(" \t\xC2\xA0"), "");
}

TEST(Utf8Text, ReplacesEveryOccurrenceOnce)
{
    EXPECT_EQ(Utf8Text::replaceAll("aXbXXc", "X", "XX"), "aXXbXXXXc");
}

TEST(Utf8Text, ReplacesNoEmptyText)
{
    EXPECT_EQ(Utf8Text::replaceAll("abc", "", "X"), "abc");
}

TEST(Utf8Text, CallsAreMarked)
{
    std::string_view rest;

    expectMarked("Utf8Text::isWellFormed", nullptr, [] { Utf8Text::isWellFormed(""); });
    expectMarked("Utf8Text::takeLine", nullptr, [&] { Utf8Text::takeLine(rest); });
    expectMarked("Utf8Text::trim", nullptr, [] { Utf8Text::trim(""); });
    expectMarked("Utf8Text::replaceAll", nullptr, [] { Utf8Text::replaceAll("", "", ""); });
}
