#include "BasicItem.h"
#include "Dictionary.h"
#include "IntBasicItem.h"

#include <list>
#include <string>
#include <utility>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::StrEq;

/// root: a { deep { k = "a.deep" }, k = "a" }, b { k = "b", other = "x" }, c = "leaf", n { k = 7 }
class DictionarySearch : public testing::Test {
protected:
    DictionarySearch()
    {
        m_tree.addValue("a.deep.k", "a.deep");
        m_tree.addValue("a.k", "a");
        m_tree.addValue("b.k", "b");
        m_tree.addValue("b.other", "x");
        m_tree.addValue("c", "leaf");
        m_tree.addValue("n.k", 7);
    }

    Dictionary m_tree;
};

TEST_F(DictionarySearch, FindItemPrefersItsOwnLevel)
{
    m_tree.addValue("k", "top");

    EXPECT_EQ(m_tree.findItem("k"), m_tree.getItem("k"));
}

TEST_F(DictionarySearch, FindItemGoesThroughTheChildrenDepthFirstInKeyOrder)
{
    EXPECT_EQ(m_tree.findItem("k"), m_tree.getItem("a.k"));

    m_tree.removeItem("a.k");
    EXPECT_EQ(m_tree.findItem("k"), m_tree.getItem("a.deep.k"));

    m_tree.removeItem("a");
    EXPECT_EQ(m_tree.findItem("k"), m_tree.getItem("b.k"));
}

TEST_F(DictionarySearch, FindItemTakesPathsAndDictionaries)
{
    EXPECT_EQ(m_tree.findItem("deep.k"), m_tree.getItem("a.deep.k"));
    EXPECT_EQ(m_tree.findItem("deep"), m_tree.getItem("a.deep"));
}

TEST_F(DictionarySearch, FindItemAnswersNullWithoutAHit)
{
    EXPECT_EQ(m_tree.findItem("nowhere"), nullptr);
    EXPECT_EQ(m_tree.findItem("b.nowhere"), nullptr);
    EXPECT_EQ(m_tree.findItem(""), nullptr);
    EXPECT_EQ(Dictionary().findItem("k"), nullptr);
}

TEST_F(DictionarySearch, FindValueAnswersTheFirstTextThatThePathLeadsTo)
{
    EXPECT_STREQ(m_tree.findValue("k"), "a");
    EXPECT_STREQ(m_tree.findValue("other"), "x");
    EXPECT_STREQ(m_tree.findValue("deep.k"), "a.deep");
    EXPECT_EQ(m_tree.findValue("nowhere"), nullptr);
}

TEST_F(DictionarySearch, FindValueGoesOnBehindALevelThatLacksThePath)
{
    m_tree.removeItem("a");
    m_tree.addValue("aa.unrelated", "");

    EXPECT_STREQ(m_tree.findValue("k"), "b");
}

TEST(DictionarySearchKept, FindValueStopsWithNullAtAnItemThatIsNoText)
{
    Dictionary integer;
    integer.addValue("k", 7);
    integer.addValue("child.k", "text");
    EXPECT_EQ(integer.findValue("k"), nullptr);

    Dictionary dictionary;
    dictionary.addValue("k.x", "");
    dictionary.addValue("l.k", "text");
    EXPECT_EQ(dictionary.findValue("k"), nullptr);
}

// A level below the top that holds an integer answers NULL, and the search goes on beside it.
TEST(DictionarySearchKept, FindValueTakesTheFirstChildWithAText)
{
    Dictionary tree;
    tree.addValue("a.k", 7);
    tree.addValue("b.k", "text");

    EXPECT_STREQ(tree.findValue("k"), "text");
}

TEST_F(DictionarySearch, FindItemsAnswersTheTopOneOnlyWhenThereIsOne)
{
    m_tree.addValue("k", "top");

    EXPECT_THAT(m_tree.findItems("k"), ElementsAre(m_tree.getItem("k")));
}

TEST_F(DictionarySearch, FindItemsAnswersThoseOfAllChildrenInKeyOrder)
{
    EXPECT_THAT(
        m_tree.findItems("k"),
        ElementsAre(m_tree.getItem("a.k"), m_tree.getItem("b.k"), m_tree.getItem("n.k")));
}

TEST_F(DictionarySearch, FindItemsGoesDeeperOnlyWhereTheLevelHasNone)
{
    m_tree.removeItem("a.k");

    EXPECT_THAT(
        m_tree.findItems("k"),
        ElementsAre(m_tree.getItem("a.deep.k"), m_tree.getItem("b.k"), m_tree.getItem("n.k")));
}

TEST_F(DictionarySearch, FindItemsIsEmptyWithoutAHit)
{
    EXPECT_THAT(m_tree.findItems("nowhere"), IsEmpty());
}

TEST_F(DictionarySearch, FindValuesAnswersTheTextsOfTheSameWalk)
{
    EXPECT_THAT(std::as_const(m_tree).findValues("k"), ElementsAre(StrEq("a"), StrEq("b")));
    EXPECT_THAT(m_tree.findValues("k"), ElementsAre(StrEq("a"), StrEq("b")));
    EXPECT_THAT(m_tree.findValues("nowhere"), IsEmpty());
}

TEST(DictionarySearchKept, FindValuesStopsTheDescentAtAnItemThatIsNoText)
{
    Dictionary tree;
    tree.addValue("a.k", 7);
    tree.addValue("a.deep.k", "below the integer");
    tree.addValue("b.k.x", "");
    tree.addValue("c.deep.k", "text");

    EXPECT_THAT(tree.findValues("k"), ElementsAre(StrEq("text")));
}

TEST_F(DictionarySearch, FindValuesThroughAnItemIsEmpty)
{
    Item& item = m_tree;

    EXPECT_THAT(item.findValues("k"), IsEmpty());
}

TEST_F(DictionarySearch, WorkersAppendToWhatIsThere)
{
    Item* const other = m_tree.getItem("c");
    std::list<Item*> items{other};
    std::list<const char*> values{"first"};

    m_tree.doFindItems("other", items);
    m_tree.doFindValues("other", values);

    EXPECT_THAT(items, ElementsAre(other, m_tree.getItem("b.other")));
    EXPECT_THAT(values, ElementsAre(StrEq("first"), StrEq("x")));
}

TEST_F(DictionarySearch, ItemPathIsTheDottedPathWithoutTheOwnName)
{
    EXPECT_EQ(m_tree.getItemPath(*m_tree.getItem("c")), "c");
    EXPECT_EQ(m_tree.getItemPath(*m_tree.getItem("b.k")), "b.k");
    EXPECT_EQ(m_tree.getItemPath(*m_tree.getItem("a.deep.k")), "a.deep.k");
    EXPECT_EQ(m_tree.getItemPath(*m_tree.getItem("a.deep")), "a.deep");
}

TEST_F(DictionarySearch, ItemPathIsFoundByNameAndEqualityNotByIdentity)
{
    BasicItem equal("k", "b");
    BasicItem otherValue("k", "c");
    BasicItem otherName("l", "b");
    IntBasicItem otherClass("other", 0);

    EXPECT_EQ(m_tree.getItemPath(equal), "b.k");
    EXPECT_EQ(m_tree.getItemPath(otherValue), "");
    EXPECT_EQ(m_tree.getItemPath(otherName), "");
    EXPECT_EQ(m_tree.getItemPath(otherClass), "");
}

TEST_F(DictionarySearch, ItemPathIsTheFirstOneDepthFirst)
{
    m_tree.addValue("b.k", "same");
    m_tree.addValue("a.deep.k", "same");
    BasicItem same("k", "same");
    EXPECT_EQ(m_tree.getItemPath(same), "a.deep.k");

    m_tree.addValue("a.k", "same");
    EXPECT_EQ(m_tree.getItemPath(same), "a.k");

    m_tree.addValue("k", "same");
    EXPECT_EQ(m_tree.getItemPath(same), "k");
}

TEST_F(DictionarySearch, ItemPathComparesDictionariesByTheirContent)
{
    Dictionary equal("b");
    equal.addValue("k", "b");
    equal.addValue("other", "x");

    EXPECT_EQ(m_tree.getItemPath(equal), "b");

    equal.addValue("more", "");
    EXPECT_EQ(m_tree.getItemPath(equal), "");
}

// The name is looked up as one key, though it holds a full stop.
TEST(DictionaryItemPath, DoesNotSplitTheName)
{
    Dictionary tree;
    std::stringstream in("<dict>\n<key>a.b</key>\n<string>x</string>\n</dict>\n");
    tree.unMarshall(in);
    BasicItem item("a.b", "x");

    EXPECT_EQ(tree.getItemPath(item), "a.b");
}

TEST(DictionaryItemPath, HoldsTheKeysOfDictionariesAndNotTheirNames)
{
    Dictionary inner("inner name");
    inner.addValue("k", "x");
    Dictionary outer("outer name");
    outer.setItem("inner", inner);
    Dictionary tree;
    tree.setItem("outer", outer);
    BasicItem item("k", "x");

    EXPECT_EQ(tree.getItemPath(item), "outer.inner.k");
}

TEST(DictionaryItemPath, OfAnItemWithoutANameIsEmptyAtTheTopAndNotBelow)
{
    Dictionary top;
    top.addValue("", "x");
    Dictionary below;
    below.addValue("a.", "x");
    BasicItem item("", "x");

    EXPECT_EQ(top.getItemPath(item), "");
    EXPECT_FALSE(top.contains(item));
    EXPECT_EQ(below.getItemPath(item), "a.");
}

TEST(DictionaryItemPath, HoldsTheEmptyKeysOnTheWay)
{
    Dictionary tree;
    tree.addValue(".k", "x");
    tree.addValue("b..l", "y");
    BasicItem k("k", "x");
    BasicItem l("l", "y");

    EXPECT_EQ(tree.getItemPath(k), ".k");
    EXPECT_EQ(tree.getItemPath(l), "b..l");
}

TEST_F(DictionarySearch, WorkerOfTheItemPathPutsThePrefixInFront)
{
    EXPECT_EQ(m_tree.doGetItemPath(*m_tree.getItem("c"), "top"), "top.c");
    EXPECT_EQ(m_tree.doGetItemPath(*m_tree.getItem("a.deep.k"), "top"), "top.a.deep.k");

    BasicItem absent("absent", "");
    EXPECT_EQ(m_tree.doGetItemPath(absent, "top"), "");
}

TEST_F(DictionarySearch, ContainsAnItemThatHasAPath)
{
    BasicItem equal("k", "a.deep");
    BasicItem absent("k", "absent");

    EXPECT_TRUE(m_tree.contains(equal));
    EXPECT_FALSE(m_tree.contains(absent));
}

} // namespace
