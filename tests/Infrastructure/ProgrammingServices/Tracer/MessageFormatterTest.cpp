#include "MessageFormatter.h"

#include <cstdarg>
#include <ostream>
#include <string>

#include <gtest/gtest.h>

namespace {

__attribute__((format(printf, 1, 2))) std::string formatted(const char* format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    std::string text = MessageFormatter::format(format, arguments);
    va_end(arguments);
    return text;
}

std::string letters(std::size_t count)
{
    return std::string(count, 'x');
}

struct Length {
    std::size_t given;
    std::size_t kept;
    std::string mark;

    friend void PrintTo(const Length& row, std::ostream* out) { *out << row.given; }
};

class MessageFormatterLengths : public testing::TestWithParam<Length> {};

} // namespace

TEST(MessageFormatter, FormatsAsPrintfDoes)
{
    const std::string text = formatted("%s has %d of %.2f, %c, 100%%", "Company1", 7, 1.5, 'z');

    EXPECT_EQ(text, "Company1 has 7 of 1.50, z, 100%");
}

TEST(MessageFormatter, TakesTextFromOutsideAsItIs)
{
    const std::string text = formatted("%s", "50% of %s and %n");

    EXPECT_EQ(text, "50% of %s and %n");
}

TEST_P(MessageFormatterLengths, KeepsAndMarksAtTheExactEdges)
{
    const std::string text = formatted("%s", letters(GetParam().given).c_str());

    EXPECT_EQ(text, letters(GetParam().kept) + GetParam().mark);
}

INSTANTIATE_TEST_SUITE_P(
    Edges, MessageFormatterLengths,
    testing::Values(
        Length{0, 0, ""}, Length{2047, 2047, ""}, Length{2048, 2047, ""}, Length{2049, 2049, ""},
        Length{3000, 3000, ""}, Length{19999, 19999, ""}, Length{20000, 19999, ""},
        Length{20001, 19999, " ..."}, Length{25000, 19999, " ..."}));

TEST(MessageFormatter, FormatsTheSecondTimeWithAllArgumentsFromTheFirst)
{
    const std::string text =
        formatted("%s-%d-%s-%.1f", letters(2040).c_str(), 12345, letters(3000).c_str(), 2.5);

    EXPECT_EQ(text, letters(2040) + "-12345-" + letters(3000) + "-2.5");
}

TEST(MessageFormatter, MarksAMessageThatCannotBeFormattedAsCut)
{
    const wchar_t unencodable[] = {L'\xD800', L'\0'};

    const std::string text = formatted("%ls", unencodable);

    EXPECT_EQ(text, " ...");
}
