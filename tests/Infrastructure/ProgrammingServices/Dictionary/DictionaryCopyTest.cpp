#include "BasicItem.h"
#include "Dictionary.h"
#include "IntBasicItem.h"
#include "RecordingItem.h"

#include <memory>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using testing::MatchesRegex;

Dictionary sample(const std::string& name)
{
    Dictionary tree(name);
    tree.addValue("a.text", "x");
    tree.addValue("a.b.number", 7);
    tree.addValue("leaf", "y");
    return tree;
}

TEST(DictionaryCopy, TakesTheNameAndDeepCopies)
{
    Dictionary original = sample("original");

    Dictionary copy(original);
    original.addValue("a.b.number", 8);

    EXPECT_EQ(copy.getName(), "original");
    EXPECT_TRUE(copy.equals(sample("")));
    EXPECT_NE(copy.getItem("a"), original.getItem("a"));
    EXPECT_EQ(copy.getItem("a.b")->getName(), "b");
}

TEST(DictionaryCopy, ClonesLeavesAndKeepsTheNamesThatDifferFromTheirKeys)
{
    RecordingItem::Record record;
    RecordingItem item(record, "name");
    Dictionary original;
    original.setItem("a.key", item);
    Dictionary section("section name");
    original.setItem("a.section key", section);
    record.cloned = 0;

    const Dictionary copy(original);

    EXPECT_EQ(record.cloned, 1);
    EXPECT_EQ(copy.getItem("a.key")->getName(), "name");
    EXPECT_EQ(copy.getItem("a.section key")->getName(), "section name");
}

TEST(DictionaryCopy, CloneIsANewDictionaryOfTheCaller)
{
    Dictionary original = sample("original");

    const std::unique_ptr<Item> clone(original.clone());
    original.clear();

    ASSERT_NE(dynamic_cast<Dictionary*>(clone.get()), nullptr);
    EXPECT_EQ(clone->getName(), "original");
    EXPECT_TRUE(clone->equals(sample("")));
}

TEST(DictionaryCopy, AssignmentReplacesNameAndItems)
{
    RecordingItem::Record record;
    RecordingItem item(record);
    Dictionary original = sample("original");
    Dictionary assigned("assigned");
    assigned.setItem("old", item);

    assigned = original;
    original.clear();

    EXPECT_EQ(assigned.getName(), "original");
    EXPECT_TRUE(assigned.equals(sample("")));
    EXPECT_EQ(record.destroyed, 1);
}

TEST(DictionaryCopy, AssignmentToItselfEmpties)
{
    Dictionary tree = sample("tree");
    const Dictionary& self = tree;

    tree = self;

    EXPECT_EQ(tree.getFirstItem(), nullptr);
    EXPECT_EQ(tree.getName(), "tree");
}

TEST(DictionaryEquals, DoesNotCompareItsOwnName)
{
    EXPECT_TRUE(sample("one").equals(sample("other")));
    EXPECT_TRUE(Dictionary("one").equals(Dictionary("other")));
}

TEST(DictionaryEquals, ComparesTheNamesOfLeavesButNotOfInnerDictionaries)
{
    Dictionary tree = sample("");
    Dictionary other = sample("");
    other.getItem("a.b")->setName("other");
    EXPECT_TRUE(tree.equals(other));

    other.getItem("a.text")->setName("other");
    EXPECT_FALSE(tree.equals(other));
}

TEST(DictionaryEquals, FailsForALeaf)
{
    EXPECT_FALSE(Dictionary("k").equals(BasicItem("k", "")));
    EXPECT_FALSE(Dictionary("k").equals(IntBasicItem("k", 0)));
}

TEST(DictionaryEquals, FailsForAnotherNumberOfEntries)
{
    Dictionary more = sample("");
    more.addValue("more", "");

    EXPECT_FALSE(sample("").equals(more));
    EXPECT_FALSE(more.equals(sample("")));
}

TEST(DictionaryEquals, FailsForAnotherKey)
{
    Dictionary other = sample("");
    other.removeItem("leaf");
    other.addValue("lead", "y");

    EXPECT_FALSE(sample("").equals(other));
}

TEST(DictionaryEquals, FailsForAnotherValueOrClassAtAnyDepth)
{
    Dictionary otherText = sample("");
    otherText.addValue("a.text", "X");
    Dictionary otherNumber = sample("");
    otherNumber.addValue("a.b.number", 8);
    Dictionary otherClass = sample("");
    otherClass.addValue("a.b.number", "7");
    Dictionary leafForDictionary = sample("");
    leafForDictionary.addValue("a.b", "");
    Dictionary dictionaryForLeaf = sample("");
    dictionaryForLeaf.removeItem("leaf");
    dictionaryForLeaf.addValue("leaf.k", "");

    for (Dictionary* const other :
         {&otherText, &otherNumber, &otherClass, &leafForDictionary, &dictionaryForLeaf}) {
        EXPECT_FALSE(sample("").equals(*other)) << other->marshall("");
        EXPECT_FALSE(other->equals(sample(""))) << other->marshall("");
    }
}

TEST(DictionaryToString, DescribesItselfAndItsEntriesOneTabDeeper)
{
    Dictionary tree("tree");
    tree.addValue("a.b", "x");
    tree.addValue("c", 7);

    EXPECT_THAT(
        tree.toString(" "),
        MatchesRegex(" Dictionary \\[0x[0-9a-f]+\\] 'tree' items :"
                     " \tDictionary \\[0x[0-9a-f]+\\] 'a' items :"
                     " \t\tBasicItem \\[0x[0-9a-f]+\\] name : 'b' value : 'x'\n"
                     " \tIntBasicItem \\[0x[0-9a-f]+\\] name : 'c' value : '7'\n"));
}

// An address takes as many characters in each of these descriptions, since it is the same one.
TEST(DictionaryToString, IsCutBehindAMebibyteOnly)
{
    constexpr std::size_t bound = 1024 * 1024;
    Dictionary tree;
    const std::size_t size = tree.toString("").size();

    const std::string longest = tree.toString(std::string(bound - size, ' '));
    const std::string cut = tree.toString(std::string(bound - size + 1, ' '));

    EXPECT_EQ(longest.size(), bound);
    EXPECT_TRUE(longest.ends_with("] 'root' items :"));
    EXPECT_EQ(cut.size(), bound + 4);
    EXPECT_TRUE(cut.ends_with("] 'root' items  ..."));
}

TEST(DictionaryToString, IsCutWhereItsEntriesDoNotFit)
{
    constexpr std::size_t bound = 1024 * 1024;
    Dictionary tree;
    const std::size_t size = tree.toString("").size();
    tree.addValue("k", "x");

    const std::string cut = tree.toString(std::string(bound - size, ' '));

    EXPECT_EQ(cut.size(), bound + 4);
    EXPECT_TRUE(cut.ends_with("] 'root' items : ..."));
}

TEST(DictionaryToString, DescribesAnEmptyDictionary)
{
    Dictionary tree;

    const std::string address = testing::PrintToString(static_cast<const void*>(&tree));
    EXPECT_EQ(tree.toString(""), "Dictionary [" + address + "] 'root' items :");
}

} // namespace
