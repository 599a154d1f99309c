#include "Allocations.h"
#include "Dictionary.h"
#include "RecordingItem.h"

#include <string>

#include <gtest/gtest.h>

namespace {

// Neither for the nested calls nor for the messages.
TEST(UntracedDictionaryCalls, AllocateNothing)
{
    const std::string path = "a key longer than a short text.another key of this kind.k";
    const std::string missing = "a key longer than a short text.a key that is not there";
    Dictionary tree;
    tree.addValue(path, "x");

    const Allocations allocations;
    tree.getItem(path);
    tree.getItem(missing);
    tree.getValue(path);
    tree.findItem(path);
    tree.findValue(path);
    tree.doRemoveItem(path);

    EXPECT_EQ(allocations.count(), 0);
}

TEST(UntracedDictionaryCalls, DescribeNoItem)
{
    RecordingItem::Record record;
    RecordingItem item(record);
    Dictionary source;
    source.setItem("inner.a", item);
    source.setItem("inner.b.c", item);
    Dictionary tree;

    tree.setItem("inner.a", item);
    tree.addDictionary("inner", source);
    tree.mergeDictionary(source);
    tree.findItem("a");
    tree.findItem("inner.a");
    tree.findValue("a");
    tree.findItems("a");
    tree.findValues("a");

    EXPECT_EQ(record.described, 0);
    tree.toString("");
    EXPECT_GT(record.described, 0) << "the tree holds some";
}

TEST(UntracedDictionaryCalls, ThatEndAtTheirRootAllocateNothing)
{
    const std::string key = "a key longer than a short text";
    const std::string missing = "another key that is not there";
    Dictionary tree;
    tree.addValue(key, "x");
    Dictionary same(tree);

    const Allocations allocations;
    EXPECT_NE(tree.findItem(key), nullptr);
    EXPECT_EQ(tree.findItem(missing), nullptr);
    EXPECT_STREQ(tree.findValue(key), "x");
    EXPECT_TRUE(tree.equals(same));

    EXPECT_EQ(allocations.count(), 0);
}

} // namespace
