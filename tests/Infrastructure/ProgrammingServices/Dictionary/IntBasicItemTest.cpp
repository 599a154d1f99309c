#include "IntBasicItem.h"

#include "BasicItem.h"
#include "Dictionary.h"
#include "KFDictionaryParsingException.h"

#include <limits>
#include <memory>
#include <sstream>
#include <string>
#include <tuple>

#include <gtest/gtest.h>

namespace {

using testing::Values;

int valueOf(const Item& item)
{
    int value = -1;
    EXPECT_TRUE(item.getValueAs(value));
    return value;
}

TEST(IntBasicItem, IsZeroUntilItIsGivenAValue)
{
    const IntBasicItem unnamed;
    const IntBasicItem named("key");

    EXPECT_EQ(unnamed.getName(), "");
    EXPECT_EQ(valueOf(unnamed), 0);
    EXPECT_EQ(named.getName(), "key");
    EXPECT_EQ(valueOf(named), 0);
}

TEST(IntBasicItem, AnswersItsInteger)
{
    IntBasicItem item("key", 12);
    EXPECT_EQ(valueOf(item), 12);

    item.setValue(-7);

    EXPECT_EQ(valueOf(item), -7);
}

TEST(IntBasicItem, AnswersNoText)
{
    const IntBasicItem item("key", 12);

    EXPECT_EQ(item.getValue(), nullptr);
    EXPECT_EQ(item.getValue("key"), nullptr);
}

TEST(IntBasicItem, HoldsNoOtherItems)
{
    IntBasicItem item("key", 12);
    int number = 5;

    EXPECT_EQ(item.getItem(std::string("key")), nullptr);
    EXPECT_EQ(item.getItem("key"), nullptr);
    EXPECT_EQ(item.getItem(static_cast<const char*>(nullptr)), nullptr);
    EXPECT_EQ(item.getAsDictionary(), nullptr);
    EXPECT_FALSE(item.getValueAs("key", number));
    EXPECT_EQ(item.findValue("key"), nullptr);
    EXPECT_TRUE(item.findValues("key").empty());
    EXPECT_FALSE(item.contains("key"));
}

TEST(IntBasicItem, CopiesNameAndValue)
{
    IntBasicItem original("key", 12);

    const IntBasicItem copy(original);
    IntBasicItem assigned("other", 1);
    assigned = original;
    original.setValue(13);
    original.setName("changed");

    EXPECT_EQ(copy.getName(), "key");
    EXPECT_EQ(valueOf(copy), 12);
    EXPECT_EQ(assigned.getName(), "key");
    EXPECT_EQ(valueOf(assigned), 12);
}

TEST(IntBasicItem, ClonesNameAndValueIntoAnItemOfItsClass)
{
    IntBasicItem original("key", 12);

    const std::unique_ptr<Item> clone(original.clone());
    original.setValue(13);

    ASSERT_NE(dynamic_cast<IntBasicItem*>(clone.get()), nullptr);
    EXPECT_EQ(clone->getName(), "key");
    EXPECT_EQ(valueOf(*clone), 12);
}

TEST(IntBasicItem, EqualsAnIntegerOfTheSameNameAndNumber)
{
    IntBasicItem item("key", 12);

    EXPECT_TRUE(item.equals(IntBasicItem("key", 12)));
    EXPECT_FALSE(item.equals(IntBasicItem("other", 12)));
    EXPECT_FALSE(item.equals(IntBasicItem("key", 13)));
}

TEST(IntBasicItem, NeverEqualsATextOrADictionary)
{
    IntBasicItem item("key", 0);

    EXPECT_FALSE(item.equals(BasicItem("key", "0")));
    EXPECT_FALSE(item.equals(Dictionary("key")));
}

TEST(IntBasicItem, DescribesItselfWithAddressNameAndValue)
{
    IntBasicItem item("key", -7);

    const std::string address = testing::PrintToString(static_cast<const void*>(&item));
    EXPECT_EQ(item.toString("\t"), "\tIntBasicItem [" + address + "] name : 'key' value : '-7'\n");
}

TEST(IntBasicItem, WritesItsLineAtTheLeftMarginWhateverTheIndent)
{
    EXPECT_EQ(IntBasicItem("key", -7).marshall("\t\t"), "<int>-7</int>\n");
    EXPECT_EQ(IntBasicItem("key", 2147483647).marshall(""), "<int>2147483647</int>\n");
}

TEST(IntBasicItem, ReadsExactlyOneLine)
{
    IntBasicItem item("key", 1);
    std::stringstream in("\t<int> 42 </int>\nnext\n");

    item.unMarshall(in);

    EXPECT_EQ(valueOf(item), 42);
    EXPECT_EQ(item.getName(), "key");
    std::string next;
    std::getline(in, next);
    EXPECT_EQ(next, "next");
}

TEST(IntBasicItem, KeepsItsValueWhenTheLineHasNoTag)
{
    IntBasicItem item("key", 1);
    std::stringstream in("</int>\n<int>5</int>\n");

    EXPECT_THROW(item.unMarshall(in), KFDictionaryParsingException);

    EXPECT_EQ(valueOf(item), 1);
}

using IntBasicItemNumber = testing::TestWithParam<std::tuple<std::string, int>>;

TEST_P(IntBasicItemNumber, IsReadUpToTheFirstNonDigit)
{
    const auto& [text, number] = GetParam();
    IntBasicItem item("key", 1);
    std::stringstream in("<int>" + text + "</int>\n");

    item.unMarshall(in);

    EXPECT_EQ(valueOf(item), number);
}

INSTANTIATE_TEST_SUITE_P(
    Texts, IntBasicItemNumber,
    Values(
        std::tuple("12abc", 12), std::tuple("abc", 0), std::tuple("", 0), std::tuple("-", 0),
        std::tuple("-7", -7), std::tuple("+7", 7), std::tuple("--7", 0), std::tuple("- 7", 0),
        std::tuple("007", 7), std::tuple("0x10", 0), std::tuple("1 2", 1), std::tuple("1.9", 1),
        std::tuple("\r8", 8), std::tuple("8\r", 8), std::tuple("2147483647", 2147483647),
        std::tuple("-2147483648", std::numeric_limits<int>::min())));

// No range check is required; what does not fit becomes the nearest that does.
INSTANTIATE_TEST_SUITE_P(
    TextsOutOfRange, IntBasicItemNumber,
    Values(
        std::tuple("2147483648", 2147483647),
        std::tuple("-2147483649", std::numeric_limits<int>::min()),
        std::tuple("99999999999999999999999", 2147483647),
        std::tuple("-99999999999999999999999", std::numeric_limits<int>::min())));

} // namespace
