#include "DictionaryIterator.h"

#include "BasicItem.h"
#include "Dictionary.h"
#include "RecordingItem.h"

#include <string>
#include <type_traits>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using testing::ElementsAre;

static_assert(std::is_polymorphic_v<DictionaryIterator>);

/// a { k = "inner" }, b = "text", c { }, n = 7
class DictionaryIteration : public testing::Test {
protected:
    DictionaryIteration()
    {
        m_tree.addValue("n", 7);
        m_tree.addValue("b", "text");
        Dictionary empty("c");
        m_tree.setItem("c", empty);
        m_tree.addValue("a.k", "inner");
    }

    Dictionary m_tree;
};

void expectAtEnd(DictionaryIterator& it)
{
    int number = 5;
    EXPECT_TRUE(it.atEnd());
    EXPECT_EQ(it.current(), nullptr);
    EXPECT_EQ(it.key(), "");
    EXPECT_EQ(it.value(), nullptr);
    EXPECT_FALSE(it.getValueAs(number));
    EXPECT_EQ(number, 5);
    EXPECT_EQ(it.currentDictionary(), nullptr);
}

TEST_F(DictionaryIteration, GoesThroughTheDirectEntriesInKeyOrder)
{
    std::vector<std::string> keys;

    for (DictionaryIterator it(m_tree); !it.atEnd(); it.next())
        keys.push_back(it.key());

    EXPECT_THAT(keys, ElementsAre("a", "b", "c", "n"));
}

TEST(DictionaryIterator, OrdersKeysByTheirBytes)
{
    Dictionary tree;
    for (const char* const key : {"b", "a", "B", "\xc3\xa9", "a2", "a10", "", "ab", "A"})
        tree.addValue(key, "");
    std::vector<std::string> keys;

    for (DictionaryIterator it(tree); !it.atEnd(); it.next())
        keys.push_back(it.key());

    EXPECT_THAT(keys, ElementsAre("", "A", "B", "a", "a10", "a2", "ab", "b", "\xc3\xa9"));
}

TEST_F(DictionaryIteration, AnswersEachEntryByItsKind)
{
    DictionaryIterator it(m_tree);
    int number = 5;

    EXPECT_EQ(it.current(), m_tree.getItem("a"));
    EXPECT_EQ(it.value(), nullptr);
    EXPECT_FALSE(it.getValueAs(number));
    EXPECT_EQ(it.currentDictionary(), m_tree.getItem("a"));

    it.next();
    EXPECT_EQ(it.current(), m_tree.getItem("b"));
    EXPECT_STREQ(it.value(), "text");
    EXPECT_FALSE(it.getValueAs(number));
    EXPECT_EQ(it.currentDictionary(), nullptr);
    EXPECT_EQ(number, 5);

    it.next().next();
    EXPECT_EQ(it.value(), nullptr);
    EXPECT_TRUE(it.getValueAs(number));
    EXPECT_EQ(number, 7);
    EXPECT_EQ(it.currentDictionary(), nullptr);
}

TEST(DictionaryIterator, AnswersTheKeyOfAnEntryAndNotTheNameOfItsItem)
{
    BasicItem item("name", "x");
    Dictionary tree;
    tree.setItem("key", item);

    EXPECT_EQ(DictionaryIterator(tree).key(), "key");
}

TEST(DictionaryIterator, StartsAtTheEndOfAnEmptyDictionary)
{
    Dictionary empty;
    DictionaryIterator it(empty);

    expectAtEnd(it);
    EXPECT_EQ(&it.firstDictionary(), &it);
    expectAtEnd(it);
    EXPECT_EQ(&it.nextDictionary(), &it);
    expectAtEnd(it);
}

TEST_F(DictionaryIteration, StaysAtTheEnd)
{
    DictionaryIterator it(m_tree);
    it.next().next().next().next();
    expectAtEnd(it);

    EXPECT_EQ(&it.next(), &it);

    expectAtEnd(it);
}

TEST(DictionaryIterator, FirstDictionaryOfLeavesIsTheEnd)
{
    Dictionary leaves;
    leaves.addValue("a", "x");
    leaves.addValue("b", 7);
    DictionaryIterator it(leaves);

    it.firstDictionary();

    expectAtEnd(it);
}

TEST_F(DictionaryIteration, GoesFromDictionaryToDictionary)
{
    DictionaryIterator it(m_tree);

    EXPECT_EQ(&it.firstDictionary(), &it);
    EXPECT_EQ(it.key(), "a");

    EXPECT_EQ(&it.nextDictionary(), &it);
    EXPECT_EQ(it.key(), "c");

    it.nextDictionary();
    expectAtEnd(it);
}

TEST_F(DictionaryIteration, FirstDictionaryDoesNotRewind)
{
    DictionaryIterator it(m_tree);
    it.next();

    it.firstDictionary();
    EXPECT_EQ(it.key(), "c");

    it.firstDictionary();
    EXPECT_EQ(it.key(), "c");

    it.next().firstDictionary();
    expectAtEnd(it);
}

TEST(DictionaryIterator, AnswersNothingForAnEntryWithoutAnItem)
{
    RecordingItem::Record record;
    record.cloneFails = true;
    RecordingItem item(record);
    Dictionary tree;
    tree.setItem("a", item);
    DictionaryIterator it(tree);
    int number = 5;

    EXPECT_FALSE(it.atEnd());
    EXPECT_EQ(it.key(), "a");
    EXPECT_EQ(it.current(), nullptr);
    EXPECT_EQ(it.value(), nullptr);
    EXPECT_FALSE(it.getValueAs(number));
    EXPECT_EQ(it.currentDictionary(), nullptr);
    EXPECT_TRUE(it.firstDictionary().atEnd());
}

} // namespace
