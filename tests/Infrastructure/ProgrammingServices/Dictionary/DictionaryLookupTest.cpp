#include "BlockedViolations.h"
#include "CrashReport.h"
#include "Dictionary.h"
#include "IntBasicItem.h"
#include "RecordingItem.h"

#include <cstdio>
#include <string>
#include <tuple>

#include <gtest/gtest.h>

namespace {

using testing::Values;

/// root: Network { Name = "home", Port = 80, Proxy { Address = "10.0.0.1" } }, Version = "2"
class DictionaryLookup : public testing::Test {
protected:
    DictionaryLookup()
    {
        m_tree.addValue("Network.Name", "home");
        m_tree.addValue("Network.Port", 80);
        m_tree.addValue("Network.Proxy.Address", "10.0.0.1");
        m_tree.addValue("Version", "2");
    }

    Dictionary m_tree;
};

TEST(Dictionary, IsNamedRootUnlessItIsGivenAName)
{
    EXPECT_EQ(Dictionary().getName(), "root");
    EXPECT_EQ(Dictionary("other").getName(), "other");
}

TEST(Dictionary, AnswersItselfAsDictionary)
{
    Dictionary dictionary;

    EXPECT_EQ(dictionary.getAsDictionary(), &dictionary);
}

TEST(Dictionary, HasNoValueOfItsOwn)
{
    Dictionary dictionary;
    int number = 5;

    EXPECT_EQ(dictionary.getValue(), nullptr);
    EXPECT_FALSE(dictionary.getValueAs(number));

    EXPECT_EQ(number, 5);
}

TEST_F(DictionaryLookup, FindsAnItemByItsPath)
{
    Item* const port = m_tree.getItem("Network.Port");

    ASSERT_NE(port, nullptr);
    EXPECT_NE(dynamic_cast<IntBasicItem*>(port), nullptr);
    EXPECT_EQ(port->getName(), "Port");
    EXPECT_EQ(m_tree.getItem(std::string("Network.Port")), port);
    EXPECT_EQ(m_tree.getItem("Network")->getItem("Port"), port);
    ASSERT_NE(m_tree.getItem("Network.Proxy"), nullptr);
    EXPECT_NE(m_tree.getItem("Network.Proxy")->getAsDictionary(), nullptr);
}

using DictionaryMiss = testing::TestWithParam<const char*>;

TEST_P(DictionaryMiss, AnswersNothingAndCreatesNothing)
{
    Dictionary tree;
    tree.addValue("Network.Name", "home");
    Dictionary before(tree);
    int number = 5;

    EXPECT_EQ(tree.getItem(GetParam()), nullptr);
    EXPECT_EQ(tree.getItem(std::string(GetParam())), nullptr);
    EXPECT_EQ(tree.getValue(GetParam()), nullptr);
    EXPECT_FALSE(tree.getValueAs(GetParam(), number));

    EXPECT_EQ(number, 5);
    EXPECT_TRUE(tree.equals(before));
}

INSTANTIATE_TEST_SUITE_P(
    Paths, DictionaryMiss,
    Values(
        "", ".", "name", "network", "Name", "Network.", ".Network", "Network..Name",
        "Network.Name.", "Network.Name.Name", "Network.Other", "Other.Name", "Other.Name.Name"));

TEST(Dictionary, LooksUpTheEmptyKey)
{
    Dictionary tree;
    tree.addValue("", "of the empty key");
    tree.addValue("a.", "under a");
    tree.addValue("b..c", "under the empty key of b");

    EXPECT_STREQ(tree.getValue(""), "of the empty key");
    EXPECT_STREQ(tree.getValue("a."), "under a");
    EXPECT_STREQ(tree.getValue("b..c"), "under the empty key of b");
}

TEST(Dictionary, NeverReadsBackAKeyWithAFullStopByItsPath)
{
    Dictionary source("source");
    std::stringstream in("<dict>\n<key>a.b</key>\n<string>x</string>\n</dict>\n");
    source.unMarshall(in);

    EXPECT_TRUE(source.hasKey("a.b"));
    EXPECT_EQ(source.getItem("a.b"), nullptr);
    EXPECT_EQ(source.getValue("a.b"), nullptr);
    EXPECT_FALSE(source.contains("a.b"));
}

TEST(DictionaryDeathTest, TakesNoNullPath)
{
    Dictionary tree;

    EXPECT_CRASH_REPORT(
        tree.getItem(static_cast<const char*>(nullptr)),
        "REQUIRE VIOLATION : cpath != NULL - In File : "
        "Infrastructure/ProgrammingServices/Dictionary/src/Dictionary - At Line : <line>");
}

TEST(DictionaryDeathTest, AnswersNothingForANullPathBeforeTheViolationIsReported)
{
    const auto getNothing = [] {
        const BlockedViolations blocked;
        const Item* const item = Dictionary().getItem(static_cast<const char*>(nullptr));
        std::fputs(item == nullptr ? "nothing\n" : "something\n", stderr);
    };

    EXPECT_CRASH_REPORT(
        getNothing(),
        "nothing\nREQUIRE VIOLATION : cpath != NULL - In File : "
        "Infrastructure/ProgrammingServices/Dictionary/src/Dictionary - At Line : <line>");
}

TEST_F(DictionaryLookup, AnswersTheTextOfATextOnly)
{
    EXPECT_STREQ(m_tree.getValue("Version"), "2");
    EXPECT_STREQ(m_tree.getValue("Network.Proxy.Address"), "10.0.0.1");
    EXPECT_EQ(m_tree.getValue("Network.Port"), nullptr);
    EXPECT_EQ(m_tree.getValue("Network"), nullptr);
}

TEST_F(DictionaryLookup, AnswersTheIntegerOfAnIntegerOnly)
{
    int number = 5;

    EXPECT_TRUE(m_tree.getValueAs("Network.Port", number));
    EXPECT_EQ(number, 80);

    number = 5;
    EXPECT_FALSE(m_tree.getValueAs("Version", number));
    EXPECT_FALSE(m_tree.getValueAs("Network", number));
    EXPECT_EQ(number, 5);
}

TEST_F(DictionaryLookup, HasAKeyOnlyAsADirectEntry)
{
    EXPECT_TRUE(m_tree.hasKey("Network"));
    EXPECT_FALSE(m_tree.hasKey("Network.Name"));
    EXPECT_FALSE(m_tree.hasKey("Name"));
    EXPECT_FALSE(m_tree.hasKey(""));
}

TEST(Dictionary, AnswersTheItemOfTheSmallestKeyFirst)
{
    Dictionary tree;
    EXPECT_EQ(tree.getFirstItem(), nullptr);

    tree.addValue("b", "2");
    tree.addValue("a", "1");

    EXPECT_STREQ(tree.getFirstItem()->getValue(), "1");
}

/// root: a { p { y = "" }, q = "" }, b { x = "", c { y = "", d { z = "" } } }, leaf = ""
class DictionaryContains : public testing::TestWithParam<std::tuple<const char*, bool>> {
protected:
    DictionaryContains()
    {
        for (const char* const path : {"a.p.y", "a.q", "b.x", "b.c.y", "b.c.d.z", "leaf"})
            m_tree.addValue(path, "");
    }

    Dictionary m_tree;
};

TEST_P(DictionaryContains, AsksAllChildrenOnceTheHeadExists)
{
    const auto& [path, contained] = GetParam();

    EXPECT_EQ(m_tree.contains(path), contained) << path;
}

INSTANTIATE_TEST_SUITE_P(
    Paths, DictionaryContains,
    Values(
        std::tuple("a", true), std::tuple("leaf", true), std::tuple("other", false),
        std::tuple("", false), std::tuple("a.q", true), std::tuple("b.x", true),
        // The head exists, and a sibling holds the rest.
        std::tuple("a.x", true), std::tuple("leaf.x", true), std::tuple("b.q", true),
        // The head does not exist.
        std::tuple("other.x", false), std::tuple("x.x", false),
        // The rest follows the same rule one level down: each level's head must exist there.
        std::tuple("a.c.y", true), std::tuple("a.c.d", true), std::tuple("a.x.d", true),
        std::tuple("leaf.p.y", true), std::tuple("a.c.d.z", true), std::tuple("a.x.y.z", true),
        std::tuple("b.p.z", false), std::tuple("a.c.d.y", false), std::tuple("a.other.y", false),
        std::tuple("a.", false), std::tuple("a..y", false)));

TEST(DictionaryContainsKept, GoesOnBehindASiblingOfTheSameHead)
{
    Dictionary tree;
    tree.addValue("a.head.other", "");
    tree.addValue("b.head.middle.x", "");

    EXPECT_TRUE(tree.contains("a.head.middle.x"));
}

} // namespace
