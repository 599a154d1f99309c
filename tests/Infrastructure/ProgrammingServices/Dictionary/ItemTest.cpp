#include "Item.h"

#include "KFDictionaryParsingException.h"
#include "RecordingItem.h"

#include <ostream>
#include <string>
#include <tuple>
#include <type_traits>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using namespace std::string_literals;
using testing::IsEmpty;
using testing::Values;

static_assert(std::is_abstract_v<Item>);
static_assert(std::is_polymorphic_v<Item>);
static_assert(std::has_virtual_destructor_v<Item>);

class ItemDefaults : public testing::Test {
protected:
    RecordingItem::Record m_record;
    RecordingItem m_item{m_record, "leaf"};
};

TEST_F(ItemDefaults, FindsNothing)
{
    EXPECT_EQ(m_item.findValue("leaf"), nullptr);
    EXPECT_THAT(m_item.findValues("leaf"), IsEmpty());
    EXPECT_FALSE(m_item.contains("leaf"));
}

TEST_F(ItemDefaults, IsNoDictionary)
{
    EXPECT_EQ(m_item.getAsDictionary(), nullptr);
}

TEST_F(ItemDefaults, HasNoText)
{
    EXPECT_EQ(m_item.getValue(), nullptr);
    EXPECT_EQ(m_item.getValue("leaf"), nullptr);
}

TEST_F(ItemDefaults, HasNoIntegerAndLeavesTheOutputAlone)
{
    int number = 5;

    EXPECT_FALSE(m_item.getValueAs(number));
    EXPECT_FALSE(m_item.getValueAs("leaf", number));

    EXPECT_EQ(number, 5);
}

/// An item with the default constructor, and with assignment, which RecordingItem has not.
class NamedItem : public Item {
public:
    using Item::Item;

    bool equals(const Item& /*other*/) override { return false; }
    Item* clone() override { return nullptr; }
    Item* getItem(const std::string& /*path*/) const override { return nullptr; }
    Item* getItem(const char* /*path*/) const override { return nullptr; }
    std::string marshall(const std::string& /*indent*/) override { return {}; }
    std::string toString(const std::string& /*indent*/) override { return {}; }
    void unMarshall(std::stringstream& /*in*/) override {}
};

TEST(Item, HasNoNameUntilItIsGivenOne)
{
    const NamedItem item;

    EXPECT_EQ(item.getName(), "");
}

TEST(Item, TakesItsNameFromTheConstructorOrLater)
{
    NamedItem item(std::string("first"));
    EXPECT_EQ(item.getName(), "first");

    item.setName("second");

    EXPECT_EQ(item.getName(), "second");
}

TEST(Item, CopiesItsName)
{
    NamedItem original(std::string("original"));

    const NamedItem copy(original);
    NamedItem assigned(std::string("other"));
    assigned = original;
    original.setName("changed");

    EXPECT_EQ(copy.getName(), "original");
    EXPECT_EQ(assigned.getName(), "original");
}

using Trim = testing::TestWithParam<std::tuple<std::string, std::string>>;

TEST_P(Trim, DropsBlanksTabsAndLineFeedsAround)
{
    const auto& [text, trimmed] = GetParam();

    EXPECT_EQ(Item::trim(text), trimmed);
}

INSTANTIATE_TEST_SUITE_P(
    Texts, Trim,
    Values(
        std::tuple("", ""), std::tuple(" ", ""), std::tuple(" \t\n", ""), std::tuple("a", "a"),
        std::tuple(" a ", "a"), std::tuple("\ta\t", "a"), std::tuple("\na\n", "a"),
        std::tuple("\t \na b\n\t c \n", "a b\n\t c"), std::tuple("\ra\r", "\ra\r"),
        std::tuple(" \r a \r ", "\r a \r"), std::tuple("\va\f", "\va\f"),
        std::tuple("\0a\0"s, "\0a\0"s)));

struct Extraction {
    const char* tag;
    std::string line;
    std::string value;

    friend void PrintTo(const Extraction& row, std::ostream* out) { *out << row.tag; }
};

using GetXmlVal = testing::TestWithParam<Extraction>;

TEST_P(GetXmlVal, TakesTheTextBetweenTheTagAndTheFirstClosingOne)
{
    const Extraction& extraction = GetParam();

    EXPECT_EQ(Item::getXmlVal(extraction.tag, extraction.line), extraction.value);
}

INSTANTIATE_TEST_SUITE_P(
    Lines, GetXmlVal,
    Values(
        Extraction{"<string>", "\t\t<string>  a b </string>", "a b"},
        Extraction{"<string>", "<string></string>", ""}, Extraction{"<int>", "<int>42", "42"},
        Extraction{"<key>", "text before <key>a</key> text after", "a"},
        // The closing tag's name is never compared.
        Extraction{"<string>", "<string>a</other>", "a"},
        Extraction{"<string>", "<string>a</", "a"},
        // Only the first "</" ends the value.
        Extraction{"<string>", "<string>a</b</string>", "a"},
        // It is searched from the start of the line: one before the tag ends nothing.
        Extraction{"<string>", "</x><string>a</string>", "a</string>"},
        Extraction{"<string>", "</<string>a", "a"},
        // The first tag counts.
        Extraction{"<key>", "<key><key>a</key>", "<key>a"},
        Extraction{"<string>", "<string>a < b > c & d / e</string>", "a < b > c & d / e"},
        Extraction{"<string>", "<string>a\r</string>", "a\r"},
        Extraction{"<string>", "<string>a</string>\r", "a"}));

struct MissingTag {
    const char* tag;
    std::string line;

    friend void PrintTo(const MissingTag& row, std::ostream* out) { *out << row.tag; }
};

using GetXmlValWithoutTag = testing::TestWithParam<MissingTag>;

// The message names "<key>" whatever the tag was.
TEST_P(GetXmlValWithoutTag, ThrowsTheFixedMessageWithItsUnitAndLine)
{
    try {
        Item::getXmlVal(GetParam().tag, GetParam().line);
        FAIL() << "nothing was thrown";
    } catch (const KFDictionaryParsingException& exception) {
        EXPECT_STREQ(exception.what(), "Can't find <key> in stream");
        EXPECT_EQ(
            exception.getFileName(), "Infrastructure/ProgrammingServices/Dictionary/src/Item");
        EXPECT_EQ(exception.getLine(), 180);
    }
}

INSTANTIATE_TEST_SUITE_P(
    Lines, GetXmlValWithoutTag,
    Values(
        MissingTag{"<key>", "</dict>"}, MissingTag{"<key>", ""},
        MissingTag{"<string>", "<key>a</key>"}, MissingTag{"<int>", "<integer>4</integer>"},
        MissingTag{"<key>", "<KEY>a</KEY>"}));

} // namespace
