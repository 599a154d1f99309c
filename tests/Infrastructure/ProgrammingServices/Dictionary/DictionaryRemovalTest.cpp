#include "BasicItem.h"
#include "Dictionary.h"
#include "RecordingItem.h"

#include <string>
#include <tuple>

#include <gtest/gtest.h>

namespace {

using testing::Values;

TEST(DictionaryRemoval, ClearDestroysEveryItemAndKeepsTheName)
{
    RecordingItem::Record record;
    RecordingItem item(record);
    Dictionary tree("name");
    tree.setItem("a", item);
    tree.setItem("b.c.d", item);

    tree.clear();

    EXPECT_EQ(record.destroyed, 2);
    EXPECT_EQ(tree.getFirstItem(), nullptr);
    EXPECT_EQ(tree.getName(), "name");
}

TEST(DictionaryRemoval, RemoveAllItemsClears)
{
    Dictionary tree("name");
    tree.addValue("a.b", "x");

    tree.removeAllItems();

    EXPECT_EQ(tree.getFirstItem(), nullptr);
    EXPECT_EQ(tree.getName(), "name");
}

TEST(DictionaryRemoval, EndsItsItemsWithItself)
{
    RecordingItem::Record record;
    RecordingItem item(record);
    {
        Dictionary tree;
        tree.setItem("a", item);
        tree.setItem("b.c.d", item);
    }

    EXPECT_EQ(record.destroyed, 2);
}

using DictionaryRemoveByPath = testing::TestWithParam<std::tuple<const char*, bool>>;

TEST_P(DictionaryRemoveByPath, TellsWhetherSomethingWasRemoved)
{
    const auto& [path, removed] = GetParam();
    Dictionary tree;
    tree.addValue("a.b.c", "x");
    tree.addValue("leaf", "y");
    Dictionary before(tree);
    Dictionary other(tree);

    EXPECT_EQ(tree.doRemoveItem(path), removed);
    other.removeItem(path);

    EXPECT_EQ(tree.getItem(path), nullptr);
    EXPECT_EQ(tree.equals(before), !removed);
    EXPECT_TRUE(other.equals(tree));
}

INSTANTIATE_TEST_SUITE_P(
    Paths, DictionaryRemoveByPath,
    Values(
        std::tuple("leaf", true), std::tuple("a", true), std::tuple("a.b", true),
        std::tuple("a.b.c", true), std::tuple("", false), std::tuple("b", false),
        std::tuple("other.b", false), std::tuple("a.other", false), std::tuple("leaf.x", false),
        std::tuple("a.b.c.d", false), std::tuple("a..c", false)));

TEST(DictionaryRemoval, DestroysTheItemOfTheEntryThatItRemoves)
{
    RecordingItem::Record record;
    RecordingItem item(record);
    Dictionary tree;
    tree.setItem("a.b", item);

    tree.removeItem("a.b");

    EXPECT_EQ(record.destroyed, 1);
    EXPECT_TRUE(tree.hasKey("a"));
}

TEST(DictionaryRemoval, RemovesAnEqualItemOfItsOwnLevelOnly)
{
    Dictionary tree;
    tree.addValue("k", "x");
    tree.addValue("child.k", "x");
    BasicItem equal("k", "x");

    tree.removeItem(equal);

    EXPECT_FALSE(tree.hasKey("k"));
    EXPECT_STREQ(tree.getValue("child.k"), "x");

    tree.removeItem(equal);
    EXPECT_STREQ(tree.getValue("child.k"), "x");
}

TEST(DictionaryRemoval, KeepsAnItemThatIsNotEqual)
{
    Dictionary tree;
    tree.addValue("k", "x");
    BasicItem otherValue("k", "y");
    BasicItem otherName("l", "x");

    tree.removeItem(otherValue);
    tree.removeItem(otherName);

    EXPECT_STREQ(tree.getValue("k"), "x");
}

// The entry is looked for under the item's name, which need not be its key.
TEST(DictionaryRemoval, LooksForTheItemUnderItsName)
{
    Dictionary tree;
    BasicItem item("name", "x");
    tree.setItem("key", item);

    tree.removeItem(item);

    EXPECT_TRUE(tree.hasKey("key"));
}

TEST(DictionaryRemoval, RemovesEveryEqualItemOfTheTree)
{
    Dictionary tree;
    tree.addValue("k", "x");
    tree.addValue("a.k", "x");
    tree.addValue("a.b.k", "x");
    tree.addValue("c.k", "other");
    tree.addValue("d.l", "x");
    BasicItem equal("k", "x");

    tree.removeAllItems(equal);

    EXPECT_EQ(
        tree.marshall(""), "<dict>\n"
                           "\t<key>a</key>\n"
                           "\t<dict>\n"
                           "\t\t<key>b</key>\n"
                           "\t\t<dict>\n"
                           "\t\t</dict>\n"
                           "\t</dict>\n"
                           "\t<key>c</key>\n"
                           "\t<dict>\n"
                           "\t\t<key>k</key>\n"
                           "\t\t<string>other</string>\n"
                           "\t</dict>\n"
                           "\t<key>d</key>\n"
                           "\t<dict>\n"
                           "\t\t<key>l</key>\n"
                           "\t\t<string>x</string>\n"
                           "\t</dict>\n"
                           "</dict>\n");
}

TEST(DictionaryRemoval, RemovesEqualDictionaries)
{
    Dictionary tree;
    tree.addValue("s.k", "x");
    tree.addValue("a.s.k", "x");
    tree.addValue("b.s.k", "other");
    Dictionary section("s");
    section.addValue("k", "x");

    tree.removeAllItems(section);

    EXPECT_FALSE(tree.hasKey("s"));
    EXPECT_EQ(tree.getItem("a.s"), nullptr);
    EXPECT_STREQ(tree.getValue("b.s.k"), "other");
}

} // namespace
