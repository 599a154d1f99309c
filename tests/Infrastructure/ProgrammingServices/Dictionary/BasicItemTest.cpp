#include "BasicItem.h"

#include "Dictionary.h"
#include "IntBasicItem.h"
#include "KFDictionaryParsingException.h"

#include <memory>
#include <sstream>
#include <string>

#include <gtest/gtest.h>

namespace {

TEST(BasicItem, IsEmptyUntilItIsGivenAValue)
{
    const BasicItem unnamed;
    const BasicItem named("key");

    EXPECT_EQ(unnamed.getName(), "");
    EXPECT_STREQ(unnamed.getValue(), "");
    EXPECT_EQ(named.getName(), "key");
    EXPECT_STREQ(named.getValue(), "");
}

TEST(BasicItem, AnswersItsText)
{
    BasicItem item("key", "text");
    EXPECT_STREQ(item.getValue(), "text");

    item.setValue("other");

    EXPECT_STREQ(item.getValue(), "other");
}

TEST(BasicItem, AnswersNoInteger)
{
    const BasicItem item("key", "12");
    int number = 5;

    EXPECT_FALSE(item.getValueAs(number));
    EXPECT_FALSE(item.getValueAs("key", number));

    EXPECT_EQ(number, 5);
}

TEST(BasicItem, HoldsNoOtherItems)
{
    BasicItem item("key", "text");

    EXPECT_EQ(item.getItem(std::string("key")), nullptr);
    EXPECT_EQ(item.getItem("key"), nullptr);
    EXPECT_EQ(item.getItem(static_cast<const char*>(nullptr)), nullptr);
    EXPECT_EQ(item.getAsDictionary(), nullptr);
    EXPECT_EQ(item.getValue("key"), nullptr);
    EXPECT_EQ(item.findValue("key"), nullptr);
    EXPECT_TRUE(item.findValues("key").empty());
    EXPECT_FALSE(item.contains("key"));
}

TEST(BasicItem, CopiesNameAndValue)
{
    BasicItem original("key", "text");

    const BasicItem copy(original);
    BasicItem assigned("other", "value");
    assigned = original;
    original.setValue("changed");
    original.setName("changed");

    EXPECT_EQ(copy.getName(), "key");
    EXPECT_STREQ(copy.getValue(), "text");
    EXPECT_EQ(assigned.getName(), "key");
    EXPECT_STREQ(assigned.getValue(), "text");
}

TEST(BasicItem, ClonesNameAndValueIntoAnItemOfItsClass)
{
    BasicItem original("key", "text");

    const std::unique_ptr<Item> clone(original.clone());
    original.setValue("changed");

    ASSERT_NE(dynamic_cast<BasicItem*>(clone.get()), nullptr);
    EXPECT_EQ(clone->getName(), "key");
    EXPECT_STREQ(clone->getValue(), "text");
}

TEST(BasicItem, EqualsATextOfTheSameNameAndBytes)
{
    BasicItem item("key", "text");

    EXPECT_TRUE(item.equals(BasicItem("key", "text")));
    EXPECT_FALSE(item.equals(BasicItem("other", "text")));
    EXPECT_FALSE(item.equals(BasicItem("key", "Text")));
    EXPECT_FALSE(item.equals(BasicItem("key", "text ")));
}

TEST(BasicItem, EqualsItsCopyEvenWithAZeroByteInside)
{
    BasicItem item("key", std::string("a\0b", 3));

    EXPECT_TRUE(item.equals(BasicItem(item)));
    EXPECT_FALSE(item.equals(BasicItem("key", std::string("b\0b", 3))));
}

TEST(BasicItem, NeverEqualsAnIntegerOrADictionary)
{
    BasicItem item("key", "12");

    EXPECT_FALSE(item.equals(IntBasicItem("key", 12)));
    EXPECT_FALSE(item.equals(Dictionary("key")));
}

TEST(BasicItem, DescribesItselfWithAddressNameAndValue)
{
    BasicItem item("key", "text");

    const std::string address = testing::PrintToString(static_cast<const void*>(&item));
    EXPECT_EQ(item.toString("\t"), "\tBasicItem [" + address + "] name : 'key' value : 'text'\n");
}

TEST(BasicItem, WritesItsLineBehindTheIndent)
{
    EXPECT_EQ(BasicItem("key", "x").marshall("\t\t"), "\t\t<string>x</string>\n");
    EXPECT_EQ(BasicItem("key").marshall(""), "<string></string>\n");
}

TEST(BasicItem, WritesItsValueWithoutEscaping)
{
    BasicItem item("key", "a<b>&c\"d'</e");

    EXPECT_EQ(item.marshall(""), "<string>a<b>&c\"d'</e</string>\n");
}

TEST(BasicItem, ReadsExactlyOneLine)
{
    BasicItem item("key", "old");
    std::stringstream in("\t<string> new text </string>\nnext\n");

    item.unMarshall(in);

    EXPECT_STREQ(item.getValue(), "new text");
    EXPECT_EQ(item.getName(), "key");
    std::string next;
    std::getline(in, next);
    EXPECT_EQ(next, "next");
}

TEST(BasicItem, KeepsItsValueWhenTheLineHasNoTag)
{
    BasicItem item("key", "old");
    std::stringstream in("</string>\n<string>new</string>\n");

    EXPECT_THROW(item.unMarshall(in), KFDictionaryParsingException);

    EXPECT_STREQ(item.getValue(), "old");
}

TEST(BasicItem, KeepsItsValueAtTheEndOfTheStream)
{
    BasicItem item("key", "old");
    std::stringstream in;

    EXPECT_THROW(item.unMarshall(in), KFDictionaryParsingException);

    EXPECT_STREQ(item.getValue(), "old");
}

} // namespace
