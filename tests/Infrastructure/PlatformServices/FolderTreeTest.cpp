#include "FolderTree.h"

#include "TemporaryFolder.h"

#include <filesystem>

#include <gtest/gtest.h>

TEST(FolderTree, GoesFromEntryToEntryDownAndUp)
{
    const TemporaryFolder folder;
    std::filesystem::create_directory(folder.file("a"));
    folder.write("a/inner", "");
    folder.write("b", "");
    FolderTree tree(folder.path());
    EXPECT_EQ(tree.name(), "");

    ASSERT_TRUE(tree.next());
    EXPECT_EQ(tree.path(), "a");
    EXPECT_TRUE(tree.enter());
    EXPECT_EQ(tree.name(), "");
    ASSERT_TRUE(tree.next());
    EXPECT_EQ(tree.name(), "inner");
    EXPECT_EQ(tree.path(), "a/inner");
    EXPECT_FALSE(tree.next());
    EXPECT_EQ(tree.name(), "");
    EXPECT_TRUE(tree.leave());
    EXPECT_EQ(tree.path(), "a");
    ASSERT_TRUE(tree.next());
    EXPECT_EQ(tree.path(), "b");
    EXPECT_FALSE(tree.next());
    EXPECT_FALSE(tree.leave());
}

TEST(FolderTree, StaysWhereItIsWhenItCannotEnter)
{
    const TemporaryFolder folder;
    folder.write("file", "");
    FolderTree tree(folder.path());
    EXPECT_FALSE(tree.enter()) << "before the first entry";
    ASSERT_TRUE(tree.next());

    EXPECT_FALSE(tree.enter());

    EXPECT_EQ(tree.path(), "file");
    EXPECT_FALSE(tree.next());
}
