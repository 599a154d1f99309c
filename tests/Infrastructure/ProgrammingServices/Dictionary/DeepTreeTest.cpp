#include "BasicItem.h"
#include "Dictionary.h"
#include "DictionaryDescription.h"
#include "PropertyListWriter.h"
#include "PublishedLogger.h"
#include "SmallStack.h"
#include "TemporaryFolder.h"

#include <list>
#include <memory>
#include <sstream>
#include <stdexcept>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

// A tree of nested dictionaries, on a stack that leaves 13 bytes for a level: what comes back from
// these tests did not use the call stack for the tree's depth.
namespace {

constexpr int s_depth = 20'000;

/// Each dictionary stands behind a leaf.
std::string nestedText()
{
    std::string text = "<dict>\n";
    for (int i = 1; i < s_depth; ++i)
        text += "<key>a</key>\n<string>leaf</string>\n<key>d</key>\n<dict>\n";
    text += "<key>k</key>\n<string>bottom</string>\n";
    for (int i = 0; i < s_depth; ++i)
        text += "</dict>\n";
    return text;
}

void readNested(Dictionary& tree)
{
    std::stringstream in(nestedText());
    tree.unMarshall(in);
}

/// "d.d.d. ... .d.k"
std::string pathToTheBottom()
{
    std::string path;
    for (int i = 1; i < s_depth; ++i)
        path += "d.";
    return path + "k";
}

TEST(DeepTree, IsReadAndFreed)
{
    runOnSmallStack([] {
        Dictionary tree;
        readNested(tree);

        EXPECT_STREQ(tree.getValue(pathToTheBottom()), "bottom");
    });
}

// What is freed waits in one row by its key; here a leaf holds the place of each second dictionary.
TEST(DeepTree, IsFreedWhereLeavesHaveTheKeysOfDictionaries)
{
    runOnSmallStack([] {
        std::string text = "<dict>\n";
        for (int i = 0; i < s_depth; ++i)
            text += "<key>a</key>\n<dict>\n<key>z</key>\n<dict>\n";
        for (int i = 0; i < s_depth; ++i)
            text += "</dict>\n</dict>\n<key>z</key>\n<string>leaf</string>\n";
        std::stringstream in(text);
        Dictionary tree;

        tree.unMarshall(in);

        EXPECT_STREQ(tree.getValue("z"), "leaf");
        EXPECT_STREQ(tree.getValue("a.z.z"), "leaf");
    });
}

TEST(DeepTree, IsReadToTheEndOfAStreamThatClosesNothing)
{
    runOnSmallStack([] {
        std::string text = nestedText();
        text.resize(text.find("</dict>"));
        std::stringstream in(text);
        Dictionary tree;

        tree.unMarshall(in);

        EXPECT_STREQ(tree.getValue(pathToTheBottom()), "bottom");
        EXPECT_TRUE(in.good());
    });
}

TEST(DeepTree, IsCopiedComparedAndAssigned)
{
    runOnSmallStack([] {
        Dictionary tree;
        readNested(tree);

        Dictionary copy(tree);
        EXPECT_TRUE(tree.equals(copy));

        copy.addValue(pathToTheBottom(), "changed");
        EXPECT_FALSE(tree.equals(copy));

        copy = tree;
        EXPECT_TRUE(copy.equals(tree));
        const std::unique_ptr<Item> clone(copy.clone());
        EXPECT_TRUE(clone->equals(tree));
    });
}

TEST(DeepTree, IsSearched)
{
    runOnSmallStack([] {
        Dictionary tree;
        readNested(tree);
        const std::string path = pathToTheBottom();
        Item* const bottom = tree.getItem(path);

        EXPECT_EQ(tree.findItem("k"), bottom);
        EXPECT_STREQ(tree.findValue("k"), "bottom");
        EXPECT_EQ(tree.findItems("k"), std::list<Item*>{bottom});
        EXPECT_EQ(tree.findValues("k").size(), 1U);
        EXPECT_EQ(tree.findItem("nowhere"), nullptr);
        EXPECT_TRUE(tree.getItemPath(*bottom) == path);
        EXPECT_TRUE(tree.contains(*bottom));
        EXPECT_TRUE(tree.contains(path));
        EXPECT_FALSE(tree.contains(path + "x"));
    });
}

TEST(DeepTree, IsBuiltMergedAndRemovedFrom)
{
    runOnSmallStack([] {
        const std::string path = pathToTheBottom();
        Dictionary tree;
        tree.addValue(path, "mine");
        Dictionary other;
        readNested(other);
        other.addValue(path + "2", "theirs");

        tree.mergeDictionary(other);

        EXPECT_STREQ(tree.getValue(path), "mine");
        EXPECT_STREQ(tree.getValue(path + "2"), "theirs");

        EXPECT_TRUE(tree.doRemoveItem(path + "2"));
        BasicItem bottom("k", "mine");
        tree.removeAllItems(bottom);

        EXPECT_EQ(tree.findItem("k"), nullptr);
        EXPECT_EQ(tree.findItem("k2"), nullptr);
    });
}

TEST(DeepTree, IsAddedAndReplaced)
{
    runOnSmallStack([] {
        Dictionary tree;
        Dictionary target("target");
        tree.setItem("target", target);
        Dictionary source;
        readNested(source);

        tree.addDictionary("target", source);
        tree.addDictionary("target", source);

        EXPECT_TRUE(tree.getItem("target")->equals(source));
        tree.addValue("target", "replaced");
        EXPECT_STREQ(tree.getValue("target"), "replaced");
    });
}

TEST(DeepTree, IsRefusedByTheWriter)
{
    runOnSmallStack([] {
        Dictionary tree;
        readNested(tree);

        EXPECT_GT(PropertyListWriter::markupSize(tree, 0), PropertyListWriter::MAX_MARKUP_SIZE);
        EXPECT_THROW(tree.marshall(""), std::length_error);
    });
}

TEST(DeepTree, LeavesTheFileAsItWas)
{
    runOnSmallStack([] {
        const TemporaryFolder folder;
        const std::string path = folder.write("file", "old");
        const PublishedLogger log;
        Dictionary tree;
        readNested(tree);

        EXPECT_NO_THROW(tree.saveToFile(path));

        EXPECT_THAT(
            log.lines(), testing::HasSubstr(
                             "Saving the dictionary to " + path +
                             " failed: the dictionaries are nested too deep\n"));
        EXPECT_EQ(folder.read("file"), "old");
        EXPECT_FALSE(std::filesystem::exists(path + ".bak"));
    });
}

TEST(DeepTree, IsDescribedUpToABound)
{
    runOnSmallStack([] {
        Dictionary tree;
        readNested(tree);

        const std::string description = tree.toString("");

        EXPECT_EQ(description.size(), DictionaryDescription::MAX_SIZE + 4);
        EXPECT_TRUE(description.ends_with(" ..."));
    });
}

// What is nested deep, but not absurdly, is written like anything else.
TEST(DeepTree, IsWrittenAndReadBackWhenItsIndentationIsWithinBounds)
{
    runOnSmallStack([] {
        std::string path;
        for (int i = 0; i < 5000; ++i)
            path += "d.";
        Dictionary tree;
        tree.addValue(path + "k", "bottom");

        std::stringstream in(tree.marshall(""));
        Dictionary back;
        back.unMarshall(in);

        EXPECT_TRUE(back.equals(tree));
    });
}

} // namespace
