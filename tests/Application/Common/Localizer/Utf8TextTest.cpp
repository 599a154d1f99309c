#include "Utf8Text.h"

#include "MarkedCalls.h"

#include <functional>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testing::ElementsAre;
using testing::IsEmpty;
using namespace std::string_view_literals;

namespace {

struct Encoding {
    const char* name;
    std::string_view bytes;
    bool wellFormed;

    friend void PrintTo(const Encoding& row, std::ostream* out) { *out << row.name; }
};

class Utf8TextEncoding : public testing::TestWithParam<Encoding> {};

constexpr bool isSurrogate(char32_t codePoint)
{
    return codePoint >= 0xD800 && codePoint <= 0xDFFF;
}

/// The bytes of a code point; those of a surrogate are no UTF-8.
std::string encoded(char32_t codePoint)
{
    const auto continuation = [codePoint](unsigned shift) {
        return static_cast<char>(0x80U | ((codePoint >> shift) & 0x3FU));
    };
    if (codePoint < 0x80)
        return {static_cast<char>(codePoint)};
    if (codePoint < 0x800)
        return {static_cast<char>(0xC0U | (codePoint >> 6U)), continuation(0)};
    if (codePoint < 0x10000)
        return {static_cast<char>(0xE0U | (codePoint >> 12U)), continuation(6), continuation(0)};
    return {
        static_cast<char>(0xF0U | (codePoint >> 18U)), continuation(12), continuation(6),
        continuation(0)};
}

/// How many texts of `length` bytes are well formed that begin with `firstLead` or a byte above,
/// and go on with any second byte and with further ones on both sides of each bound.
int countWellFormed(std::size_t length, int firstLead)
{
    constexpr std::string_view further = "\x00\x7F\x80\xBF\xC0\xFF"sv;
    std::string text(length, '\0');
    const std::function<int(std::size_t)> countFrom = [&](std::size_t index) {
        if (index == length)
            return Utf8Text::isWellFormed(text) ? 1 : 0;
        int count = 0;
        for (int byte = 0; byte <= 0xFF; ++byte) {
            text[index] = static_cast<char>(byte);
            if (index == 1 || further.find(text[index]) != std::string_view::npos)
                count += countFrom(index + 1);
        }
        return count;
    };
    int count = 0;
    for (int lead = firstLead; lead <= 0xFF; ++lead) {
        text[0] = static_cast<char>(lead);
        count += countFrom(1);
    }
    return count;
}

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

TEST(Utf8Text, IsTheEncodingOfEveryCodePointButTheSurrogates)
{
    std::vector<char32_t> misjudged;

    for (char32_t codePoint = 0; codePoint <= 0x10FFFF; ++codePoint) {
        if (Utf8Text::isWellFormed(encoded(codePoint)) == isSurrogate(codePoint))
            misjudged.push_back(codePoint);
    }

    EXPECT_THAT(misjudged, IsEmpty());
}

// With the test above: these many begin with an encoding's bytes, so nothing else is well formed.
TEST(Utf8Text, IsNothingButTheEncodingsOfCodePoints)
{
    constexpr int ofTwoBytes = 0x800 - 0x80;
    constexpr int ofThreeBytes = 0x10000 - 0x800 - 0x800; // without the surrogates
    constexpr int ofFourBytes = 0x110000 - 0x10000;

    // Two of the 64 bytes that continue a character are among the further ones.
    EXPECT_EQ(countWellFormed(2, 0x80), ofTwoBytes);
    EXPECT_EQ(countWellFormed(3, 0xE0), ofThreeBytes * 2 / 64);
    EXPECT_EQ(countWellFormed(4, 0xF0), ofFourBytes * 2 / 64 * 2 / 64);
}

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

TEST(Utf8Text, TrimsEachWhiteSpaceOfUnicodeAtBothEndsAndNothingElse)
{
    std::vector<char32_t> trimmed;

    for (char32_t codePoint = 0; codePoint <= 0xFFFF; ++codePoint) {
        const std::string character = encoded(codePoint);
        const std::string text = character + "a" + character;
        const std::string_view rest = Utf8Text::trim(text);
        EXPECT_TRUE(rest == "a" || rest == text) << text;
        if (rest == "a")
            trimmed.push_back(codePoint);
    }

    EXPECT_THAT(
        trimmed, ElementsAre(
                     0x09, 0x0A, 0x0B, 0x0C, 0x0D, 0x20, 0x85, 0xA0, 0x1680, 0x2000, 0x2001, 0x2002,
                     0x2003, 0x2004, 0x2005, 0x2006, 0x2007, 0x2008, 0x2009, 0x200A, 0x2028, 0x2029,
                     0x202F, 0x205F, 0x3000));
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
