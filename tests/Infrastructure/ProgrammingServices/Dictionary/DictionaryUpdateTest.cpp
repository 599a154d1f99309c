#include "BasicItem.h"
#include "Dictionary.h"
#include "IntBasicItem.h"
#include "RecordingItem.h"

#include <memory>
#include <sstream>
#include <string>

#include <gtest/gtest.h>

namespace {

TEST(DictionarySetItem, MakesTheDictionariesThatThePathLacks)
{
    Dictionary tree;
    BasicItem item("c", "x");

    tree.setItem("a.b.c", item);

    EXPECT_EQ(
        tree.marshall(""), "<dict>\n"
                           "\t<key>a</key>\n"
                           "\t<dict>\n"
                           "\t\t<key>b</key>\n"
                           "\t\t<dict>\n"
                           "\t\t\t<key>c</key>\n"
                           "\t\t\t<string>x</string>\n"
                           "\t\t</dict>\n"
                           "\t</dict>\n"
                           "</dict>\n");
    EXPECT_EQ(tree.getItem("a")->getName(), "a");
    EXPECT_EQ(tree.getItem("a.b")->getName(), "b");
}

TEST(DictionarySetItem, StoresACloneAndLeavesTheItemToTheCaller)
{
    RecordingItem::Record record;
    {
        RecordingItem item(record);
        Dictionary tree;

        tree.setItem("a.b", item);

        EXPECT_EQ(record.cloned, 1);
        EXPECT_NE(tree.getItem("a.b"), &item);
        EXPECT_EQ(record.destroyed, 0);
    }
    EXPECT_EQ(record.destroyed, 2);
}

TEST(DictionarySetItem, KeepsTheCloneAnIndependentCopy)
{
    Dictionary section("section");
    section.addValue("k", "before");
    Dictionary tree;

    tree.setItem("a", section);
    section.addValue("k", "after");

    EXPECT_STREQ(tree.getValue("a.k"), "before");
}

TEST(DictionarySetItem, LeavesTheCloneItsOwnName)
{
    Dictionary tree;
    BasicItem item("name", "x");

    tree.setItem("key", item);

    EXPECT_EQ(tree.getItem("key")->getName(), "name");
    EXPECT_FALSE(tree.hasKey("name"));
    EXPECT_EQ(tree.marshall(""), "<dict>\n\t<key>key</key>\n\t<string>x</string>\n</dict>\n");
}

TEST(DictionarySetItem, DestroysWhatItReplaces)
{
    RecordingItem::Record replaced;
    RecordingItem item(replaced);
    Dictionary tree;
    tree.setItem("a.b", item);

    tree.addValue("a.b", "other");

    EXPECT_EQ(replaced.destroyed, 1);
    EXPECT_STREQ(tree.getValue("a.b"), "other");
}

TEST(DictionarySetItem, ReplacesALeafOrADictionaryAtTheEndOfThePath)
{
    Dictionary tree;
    tree.addValue("a.b", "leaf");
    tree.addValue("c.d", "leaf");
    Dictionary section("b");

    tree.setItem("a.b", section);
    tree.addValue("c", 5);

    EXPECT_NE(tree.getItem("a.b")->getAsDictionary(), nullptr);
    int number = 0;
    EXPECT_TRUE(tree.getValueAs("c", number));
    EXPECT_EQ(number, 5);
}

TEST(DictionarySetItem, StoresNothingBehindALeafOnTheWay)
{
    RecordingItem::Record record;
    RecordingItem item(record);
    Dictionary tree;
    tree.addValue("a.b", "leaf");
    Dictionary before(tree);

    tree.setItem("a.b.c", item);
    tree.setItem("a.b.c.d", item);

    EXPECT_TRUE(tree.equals(before));
    EXPECT_EQ(record.destroyed, record.cloned);
}

TEST(DictionarySetItem, StoresUnderEmptyKeys)
{
    Dictionary tree;
    BasicItem item("", "x");

    tree.setItem("", item);
    tree.setItem("a..b", item);

    EXPECT_TRUE(tree.hasKey(""));
    EXPECT_NE(tree.getItem("a.")->getAsDictionary(), nullptr);
    EXPECT_STREQ(tree.getValue("a..b"), "x");
}

TEST(DictionaryAddValue, NamesTheItemByTheLastKey)
{
    Dictionary tree;

    tree.addValue("a.b.text", "x");
    tree.addValue("number", 7);
    tree.addValue("a.", "of the empty key");

    EXPECT_EQ(tree.getItem("a.b.text")->getName(), "text");
    EXPECT_STREQ(tree.getValue("a.b.text"), "x");
    EXPECT_NE(dynamic_cast<BasicItem*>(tree.getItem("a.b.text")), nullptr);
    EXPECT_EQ(tree.getItem("number")->getName(), "number");
    EXPECT_NE(dynamic_cast<IntBasicItem*>(tree.getItem("number")), nullptr);
    EXPECT_EQ(tree.getItem("a.")->getName(), "");
}

TEST(DictionaryAddValue, StoresNothingBehindALeaf)
{
    Dictionary tree;

    tree.addValue("a.b", "leaf");
    tree.addValue("a.b.c", "lost");
    tree.addValue("a.b.d", 7);

    EXPECT_STREQ(tree.getValue("a.b"), "leaf");
    EXPECT_EQ(tree.getItem("a.b.c"), nullptr);
    EXPECT_EQ(tree.getItem("a.b.d"), nullptr);
}

TEST(DictionaryAddValue, ReplacesTheItemOfTheSamePath)
{
    Dictionary tree;

    tree.addValue("a.b", "first");
    tree.addValue("a.b", 7);
    tree.addValue("a.b", "second");

    EXPECT_STREQ(tree.getValue("a.b"), "second");
    EXPECT_EQ(tree.marshall("").find("first"), std::string::npos);
}

TEST(DictionaryAddDictionary, CopiesTheEntriesOfTheSource)
{
    RecordingItem::Record replaced;
    RecordingItem old(replaced);
    Dictionary tree;
    tree.addValue("target.kept", "kept");
    tree.setItem("target.k", old);
    Dictionary source("source");
    source.addValue("k", "new");
    source.addValue("sub.x", 1);
    Dictionary sourceBefore(source);

    tree.addDictionary("target", source);
    const std::string added = tree.marshall("");
    source.addValue("sub.x", 2);

    EXPECT_EQ(
        added, "<dict>\n"
               "\t<key>target</key>\n"
               "\t<dict>\n"
               "\t\t<key>k</key>\n"
               "\t\t<string>new</string>\n"
               "\t\t<key>kept</key>\n"
               "\t\t<string>kept</string>\n"
               "\t\t<key>sub</key>\n"
               "\t\t<dict>\n"
               "\t\t\t<key>x</key>\n"
               "<int>1</int>\n"
               "\t\t</dict>\n"
               "\t</dict>\n"
               "</dict>\n");
    EXPECT_EQ(tree.marshall(""), added);
    EXPECT_EQ(replaced.destroyed, 1);
    source.addValue("sub.x", 1);
    EXPECT_TRUE(source.equals(sourceBefore));
}

TEST(DictionaryAddDictionary, ReplacesASubDictionaryInsteadOfMerging)
{
    Dictionary tree;
    tree.addValue("target.sub.old", "x");
    Dictionary source;
    source.addValue("sub.fresh", "y");

    tree.addDictionary("target", source);

    EXPECT_EQ(tree.getItem("target.sub.old"), nullptr);
    EXPECT_STREQ(tree.getValue("target.sub.fresh"), "y");
}

TEST(DictionaryAddDictionary, SplitsTheKeysOfTheSource)
{
    Dictionary source;
    std::stringstream in("<dict>\n<key>a.b</key>\n<string>x</string>\n</dict>\n");
    source.unMarshall(in);
    Dictionary tree;
    tree.addValue("t.c", "y");

    tree.addDictionary("t", source);

    EXPECT_TRUE(source.hasKey("a.b"));
    EXPECT_STREQ(tree.getValue("t.a.b"), "x");
    EXPECT_FALSE(tree.getItem("t")->getAsDictionary()->hasKey("a.b"));
}

// A later key may lead into what an earlier one has stored.
TEST(DictionaryAddDictionary, StoresTheEntriesInKeyOrder)
{
    Dictionary source;
    std::stringstream in("<dict>\n<key>a.b</key>\n<string>x</string>\n"
                         "<key>a</key>\n<dict>\n</dict>\n</dict>\n");
    source.unMarshall(in);
    Dictionary tree;
    tree.addValue("t.c", "y");

    tree.addDictionary("t", source);

    EXPECT_STREQ(tree.getValue("t.a.b"), "x");
}

TEST(DictionaryAddDictionary, DoesNothingWithoutATargetDictionary)
{
    Dictionary tree;
    tree.addValue("leaf", "x");
    Dictionary before(tree);
    Dictionary source;
    source.addValue("k", "y");

    tree.addDictionary("missing", source);
    tree.addDictionary("leaf", source);
    tree.addDictionary("", source);

    EXPECT_TRUE(tree.equals(before));
}

TEST(DictionaryMerge, KeepsWhatIsThere)
{
    Dictionary tree;
    tree.addValue("x", 1);
    tree.addValue("y", "dictionary here, leaf there");
    Dictionary other;
    other.addValue("x", 2);
    other.addValue("y", "other");

    tree.mergeDictionary(other);

    int number = 0;
    EXPECT_TRUE(tree.getValueAs("x", number));
    EXPECT_EQ(number, 1);
    EXPECT_STREQ(tree.getValue("y"), "dictionary here, leaf there");
}

TEST(DictionaryMerge, AddsDeepCopiesOfWhatIsMissing)
{
    Dictionary tree;
    Dictionary other;
    other.addValue("y.k", "x");
    Dictionary otherBefore(other);

    tree.mergeDictionary(other);

    EXPECT_TRUE(other.equals(otherBefore));
    other.addValue("y.k", "changed");
    EXPECT_STREQ(tree.getValue("y.k"), "x");
}

TEST(DictionaryMerge, GoesIntoDictionariesThatBothHave)
{
    Dictionary tree;
    tree.addValue("a.b.mine", "1");
    tree.addValue("a.b.both", "mine");
    Dictionary other;
    other.addValue("a.b.theirs", "2");
    other.addValue("a.b.both", "theirs");
    other.addValue("a.c", "3");

    tree.mergeDictionary(other);

    EXPECT_EQ(
        tree.marshall(""), "<dict>\n"
                           "\t<key>a</key>\n"
                           "\t<dict>\n"
                           "\t\t<key>b</key>\n"
                           "\t\t<dict>\n"
                           "\t\t\t<key>both</key>\n"
                           "\t\t\t<string>mine</string>\n"
                           "\t\t\t<key>mine</key>\n"
                           "\t\t\t<string>1</string>\n"
                           "\t\t\t<key>theirs</key>\n"
                           "\t\t\t<string>2</string>\n"
                           "\t\t</dict>\n"
                           "\t\t<key>c</key>\n"
                           "\t\t<string>3</string>\n"
                           "\t</dict>\n"
                           "</dict>\n");
}

TEST(DictionaryMerge, KeepsItsLeafAgainstADictionaryAndTheOtherWayRound)
{
    Dictionary tree;
    tree.addValue("leaf", "mine");
    tree.addValue("dictionary.k", "mine");
    Dictionary other;
    other.addValue("leaf.k", "theirs");
    other.addValue("dictionary", "theirs");
    Dictionary before(tree);

    tree.mergeDictionary(other);

    EXPECT_TRUE(tree.equals(before));
}

// Keys are not paths here: the entry is stored as it stands in the other tree.
TEST(DictionaryMerge, DoesNotSplitKeys)
{
    Dictionary other;
    std::stringstream in("<dict>\n<key>a.b</key>\n<string>x</string>\n</dict>\n");
    other.unMarshall(in);
    Dictionary tree;

    tree.mergeDictionary(other);

    EXPECT_TRUE(tree.hasKey("a.b"));
    EXPECT_TRUE(tree.equals(other));
}

} // namespace
