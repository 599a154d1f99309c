#include "IPAddressEntryFormatter.h"

#include "MarkedCalls.h"

#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

struct Text {
    const char* name;
    std::u16string text;
    bool valid;

    friend void PrintTo(const Text& row, std::ostream* out) { *out << row.name; }
};

class IPAddressEntryFormatterText : public testing::TestWithParam<Text> {
protected:
    const QString m_text = QString::fromStdU16String(GetParam().text);
    const IPAddressEntryFormatter m_formatter;
};

} // namespace

TEST_P(IPAddressEntryFormatterText, IsJudged)
{
    QString errorDescription;

    EXPECT_EQ(m_formatter.isPartialStringValid(m_text, errorDescription), GetParam().valid);
    EXPECT_EQ(errorDescription, GetParam().valid ? QString() : QStringLiteral("NOT_DECIMAL_CHAR"));
}

TEST_P(IPAddressEntryFormatterText, IsJudgedAlikeForTheTextField)
{
    QString text = m_text;
    int cursor = 0;

    EXPECT_EQ(
        m_formatter.validate(text, cursor),
        GetParam().valid ? QValidator::Acceptable : QValidator::Invalid);
    EXPECT_EQ(text, m_text);
}

INSTANTIATE_TEST_SUITE_P(
    Table, IPAddressEntryFormatterText,
    testing::ValuesIn(std::vector<Text>{
        {"Empty", u"", true},
        {"Address", u"192.168.0.1", true},
        {"FiveParts", u"1.2.3.4.5", true},
        {"LargePart", u"999.1", true},
        {"FullStopsAlone", u"...", true},
        {"AllDigits", u"0123456789", true},
        {"FullWidthDigit", u"\uFF11", true},
        {"ArabicDigits", u"\u0661.\u06F2", true},
        {"DevanagariDigit", u"\u0967", true},
        {"DigitBeyondTheBasicPlane", u"\U0001D7CE\U000104A0", true},
        {"MillionDigits", std::u16string(1000000, u'7'), true},
        {"Letter", u"1a", false},
        {"HexadecimalLetter", u"F", false},
        {"Blank", u"1 2", false},
        {"Colon", u"::1", false},
        {"Comma", u"1,2", false},
        {"Sign", u"-1", false},
        {"LineFeed", u"1\n", false},
        {"Nul", std::u16string(1, u'\0'), false},
        {"Superscript", u"\u00B2", false},
        {"Fraction", u"\u00BD", false},
        {"RomanNumeral", u"\u2163", false},
        {"IdeographicNumber", u"\u4E09", false},
        {"FullWidthFullStop", u"\uFF0E", false},
        {"LetterBeyondTheBasicPlane", u"\U0001D400", false},
        {"LoneSurrogate", std::u16string(1, char16_t(0xD835)), false},
        {"LastOfMany", std::u16string(1000000, u'7') + u'x', false},
    }),
    [](const auto& test) { return std::string(test.param.name); });

TEST(IPAddressEntryFormatter, TextOfAValueIsTheValue)
{
    EXPECT_EQ(IPAddressEntryFormatter().stringForObjectValue("any text"), "any text");
}

TEST(IPAddressEntryFormatter, ValueOfATextIsTheTextWhateverItIs)
{
    std::string value = "former";

    EXPECT_TRUE(IPAddressEntryFormatter().getObjectValue(value, "any text"));
    EXPECT_EQ(value, "any text");
}

TEST(IPAddressEntryFormatter, HasNoTextWithAttributes)
{
    EXPECT_EQ(IPAddressEntryFormatter().attributedStringForObjectValue("1.2"), std::nullopt);
}

TEST(IPAddressEntryFormatter, MarksAndCountsItsCalls)
{
    const IPAddressEntryFormatter formatter;
    std::string value;
    QString text;
    int cursor = 0;

    expectMarked("IPAddressEntryFormatter::stringForObjectValue", &formatter, [&] {
        formatter.stringForObjectValue("1.2");
    });
    expectMarked("IPAddressEntryFormatter::getObjectValue", &formatter, [&] {
        formatter.getObjectValue(value, "1.2");
    });
    expectMarked("IPAddressEntryFormatter::attributedStringForObjectValue", &formatter, [&] {
        formatter.attributedStringForObjectValue("1.2");
    });
    expectMarked("IPAddressEntryFormatter::isPartialStringValid", &formatter, [&] {
        formatter.isPartialStringValid(text, text);
    });
    expectMarked(
        "IPAddressEntryFormatter::validate", &formatter, [&] { formatter.validate(text, cursor); });
    expectCounted(
        "IPAddressEntryFormatter", [] { return std::make_unique<IPAddressEntryFormatter>(); });
}
