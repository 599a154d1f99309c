#include "BasicItem.h"
#include "Dictionary.h"

#include <string>

#include <gtest/gtest.h>

// What an operation is given may be part of the tree that it changes. The sanitizers see to it that
// nothing is used after its end; these tests also pin the results.
namespace {

/// tree: a { b { k = "x" }, k = "y" }
class DictionaryAlias : public testing::Test {
protected:
    DictionaryAlias()
    {
        m_tree.addValue("a.b.k", "x");
        m_tree.addValue("a.k", "y");
    }

    Dictionary& at(const char* path) const { return *m_tree.getItem(path)->getAsDictionary(); }

    Dictionary m_tree;
};

TEST_F(DictionaryAlias, SetsAnItemOnItsOwnPath)
{
    const Dictionary before(m_tree);

    m_tree.setItem("a.k", *m_tree.getItem("a.k"));
    m_tree.setItem("a.b", *m_tree.getItem("a.b"));
    m_tree.setItem("a", *m_tree.getItem("a"));

    EXPECT_TRUE(m_tree.equals(before));
}

TEST_F(DictionaryAlias, ReplacesADictionaryByAnItemOfItsOwn)
{
    m_tree.setItem("a", *m_tree.getItem("a.b.k"));

    EXPECT_STREQ(m_tree.getValue("a"), "x");
}

TEST_F(DictionaryAlias, SetsADictionaryUnderItself)
{
    const Dictionary before(m_tree);

    m_tree.setItem("new.self", m_tree);
    at("a").setItem("b", at("a"));

    EXPECT_TRUE(at("new.self").equals(before));
    EXPECT_STREQ(m_tree.getValue("a.b.b.k"), "x");
    EXPECT_STREQ(m_tree.getValue("a.b.k"), "y");
}

TEST_F(DictionaryAlias, TakesAPathFromTheItemThatIsReplaced)
{
    BasicItem item("other", "z");

    m_tree.setItem(m_tree.getItem("a")->getName(), item);

    EXPECT_STREQ(m_tree.getValue("a"), "z");
}

TEST_F(DictionaryAlias, RemovesByANameThatEndsWithTheItem)
{
    EXPECT_TRUE(m_tree.doRemoveItem(m_tree.getItem("a")->getName()));

    EXPECT_EQ(m_tree.getFirstItem(), nullptr);
}

TEST_F(DictionaryAlias, AddsADictionaryToItself)
{
    const Dictionary before(m_tree);

    m_tree.addDictionary("a", at("a"));

    EXPECT_TRUE(m_tree.equals(before));
}

TEST_F(DictionaryAlias, AddsADictionaryToOneBelowIt)
{
    m_tree.addDictionary("a", m_tree);

    EXPECT_STREQ(m_tree.getValue("a.a.b.k"), "x");
    EXPECT_STREQ(m_tree.getValue("a.a.k"), "y");
    EXPECT_STREQ(m_tree.getValue("a.k"), "y");
}

TEST_F(DictionaryAlias, AddsADictionaryThatIsReplacedOnTheWay)
{
    m_tree.addValue("a.b.b", "replaces the source itself");
    m_tree.addValue("a.b.c", "comes after it");

    m_tree.addDictionary("a", at("a.b"));

    EXPECT_STREQ(m_tree.getValue("a.b"), "replaces the source itself");
    EXPECT_STREQ(m_tree.getValue("a.c"), "comes after it");
    EXPECT_STREQ(m_tree.getValue("a.k"), "x");
}

TEST_F(DictionaryAlias, MergesADictionaryWithItself)
{
    const Dictionary before(m_tree);

    m_tree.mergeDictionary(m_tree);

    EXPECT_TRUE(m_tree.equals(before));
}

TEST_F(DictionaryAlias, MergesADictionaryWithOneBelowIt)
{
    m_tree.mergeDictionary(at("a"));

    EXPECT_STREQ(m_tree.getValue("k"), "y");
    EXPECT_STREQ(m_tree.getValue("b.k"), "x");
    EXPECT_STREQ(m_tree.getValue("a.b.k"), "x");
}

TEST_F(DictionaryAlias, MergesADictionaryWithOneAboveIt)
{
    at("a").mergeDictionary(m_tree);

    EXPECT_STREQ(m_tree.getValue("a.k"), "y");
    EXPECT_STREQ(m_tree.getValue("a.a.b.k"), "x");
    EXPECT_STREQ(m_tree.getValue("a.a.k"), "y");
    EXPECT_EQ(m_tree.getItem("a.a.a"), nullptr);
}

// Each level is merged into the one below it while it is the source of the merge.
TEST(DictionaryAliasChain, IsMergedUpAndDown)
{
    Dictionary chain;
    chain.addValue("a.a.a.k", "x");
    Dictionary same(chain);

    chain.getItem("a")->getAsDictionary()->mergeDictionary(chain);
    same.mergeDictionary(*same.getItem("a")->getAsDictionary());

    EXPECT_STREQ(chain.getValue("a.a.a.k"), "x");
    EXPECT_STREQ(chain.getValue("a.a.a.a.k"), "x");
    EXPECT_STREQ(same.getValue("a.a.k"), "x");
    EXPECT_STREQ(same.getValue("a.a.a.k"), "x");
}

TEST_F(DictionaryAlias, RemovesTheVeryItemThatItIsGiven)
{
    at("a").removeItem(*m_tree.getItem("a.k"));
    EXPECT_EQ(m_tree.getItem("a.k"), nullptr);

    m_tree.removeItem(*m_tree.getItem("a"));
    EXPECT_EQ(m_tree.getFirstItem(), nullptr);
}

TEST_F(DictionaryAlias, RemovesAllItemsEqualToOneOfThem)
{
    m_tree.addValue("k", "x");
    m_tree.addValue("c.k", "x");

    m_tree.removeAllItems(*m_tree.getItem("k"));

    EXPECT_FALSE(m_tree.hasKey("k"));
    EXPECT_EQ(m_tree.getItem("a.b.k"), nullptr);
    EXPECT_EQ(m_tree.getItem("c.k"), nullptr);
    EXPECT_STREQ(m_tree.getValue("a.k"), "y");
}

TEST_F(DictionaryAlias, RemovesAllDictionariesEqualToOneOfThem)
{
    m_tree.addValue("c.b.k", "x");

    m_tree.removeAllItems(at("a.b"));

    EXPECT_EQ(m_tree.getItem("a.b"), nullptr);
    EXPECT_EQ(m_tree.getItem("c.b"), nullptr);
    EXPECT_TRUE(m_tree.hasKey("c"));
}

TEST_F(DictionaryAlias, AssignsADictionaryFromOneBelowIt)
{
    m_tree = at("a");

    EXPECT_EQ(m_tree.getName(), "a");
    EXPECT_STREQ(m_tree.getValue("b.k"), "x");
    EXPECT_STREQ(m_tree.getValue("k"), "y");
    EXPECT_FALSE(m_tree.hasKey("a"));
}

// It is emptied first, so the copy of what holds it holds it empty.
TEST_F(DictionaryAlias, AssignsADictionaryFromOneAboveIt)
{
    at("a") = m_tree;

    EXPECT_EQ(
        m_tree.marshall(""), "<dict>\n"
                             "\t<key>a</key>\n"
                             "\t<dict>\n"
                             "\t\t<key>a</key>\n"
                             "\t\t<dict>\n"
                             "\t\t</dict>\n"
                             "\t</dict>\n"
                             "</dict>\n");
}

} // namespace
