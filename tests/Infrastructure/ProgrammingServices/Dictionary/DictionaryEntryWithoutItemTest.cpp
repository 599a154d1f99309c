#include "BasicItem.h"
#include "Dictionary.h"
#include "RecordingItem.h"

#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

/// A dictionary with an entry "a" that has no item, and the text "b".
class DictionaryEntryWithoutItem : public testing::Test {
protected:
    DictionaryEntryWithoutItem()
    {
        m_record.cloneFails = true;
        RecordingItem item(m_record, "a");
        m_tree.setItem("a", item);
        m_tree.addValue("b", "x");
    }

    RecordingItem::Record m_record;
    Dictionary m_tree;
};

TEST_F(DictionaryEntryWithoutItem, IsAKeyThatLeadsToNothing)
{
    EXPECT_TRUE(m_tree.hasKey("a"));
    EXPECT_EQ(m_tree.getItem("a"), nullptr);
    EXPECT_EQ(m_tree.getFirstItem(), nullptr);
    EXPECT_EQ(m_tree.getValue("a.k"), nullptr);
    EXPECT_EQ(m_tree.findItem("a"), nullptr);
}

TEST_F(DictionaryEntryWithoutItem, IsCopiedComparedAndRemoved)
{
    EXPECT_TRUE(m_tree.equals(Dictionary(m_tree)));
    EXPECT_TRUE(m_tree.doRemoveItem("a"));
    EXPECT_FALSE(m_tree.hasKey("a"));
}

TEST_F(DictionaryEntryWithoutItem, EqualsNoEntryThatHasOne)
{
    Dictionary other(m_tree);
    other.addValue("a", "");

    EXPECT_FALSE(m_tree.equals(other));
    EXPECT_FALSE(other.equals(m_tree));
}

TEST_F(DictionaryEntryWithoutItem, IsThePathOfNoItem)
{
    BasicItem item("a");

    EXPECT_EQ(m_tree.getItemPath(item), "");
    EXPECT_FALSE(m_tree.contains(item));
}

TEST_F(DictionaryEntryWithoutItem, IsRemovedByNoItem)
{
    BasicItem item("a");

    m_tree.removeItem(item);
    m_tree.removeAllItems(item);

    EXPECT_TRUE(m_tree.hasKey("a"));
}

TEST_F(DictionaryEntryWithoutItem, HasNoDescriptionAndNoLines)
{
    EXPECT_THAT(
        m_tree.toString(""), testing::MatchesRegex("Dictionary \\[0x[0-9a-f]+\\] 'root' items :"
                                                   "\tBasicItem \\[0x[0-9a-f]+\\] name : 'b' "
                                                   "value : 'x'\n"));
    EXPECT_EQ(m_tree.marshall(""), "<dict>\n\t<key>b</key>\n\t<string>x</string>\n</dict>\n");
}

TEST_F(DictionaryEntryWithoutItem, IsNotAddedToAnotherDictionary)
{
    Dictionary target;
    target.addValue("t.c", "y");

    target.addDictionary("t", m_tree);

    EXPECT_EQ(target.getItem("t.a"), nullptr);
    EXPECT_FALSE(target.getItem("t")->getAsDictionary()->hasKey("a"));
    EXPECT_STREQ(target.getValue("t.b"), "x");
}

TEST_F(DictionaryEntryWithoutItem, IsMergedAsItIs)
{
    Dictionary target;

    target.mergeDictionary(m_tree);

    EXPECT_TRUE(target.hasKey("a"));
    EXPECT_EQ(target.getItem("a"), nullptr);
}

} // namespace
