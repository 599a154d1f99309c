#include "FileSystemManagement.h"

#include "TemporaryFolder.h"

#include <gtest/gtest.h>

TEST(FileSystemManagement, SeparatesFoldersByASlash)
{
    EXPECT_EQ(FileSystemManagement::getFolderSeparator(), '/');
}

TEST(FileSystemManagement, CreatesAllMissingParents)
{
    const TemporaryFolder folder;

    EXPECT_TRUE(FileSystemManagement::createFolder(folder.file("a//b")));

    EXPECT_TRUE(FileSystemManagement::existFolder(folder.file("a")));
    EXPECT_TRUE(FileSystemManagement::existFolder(folder.file("a/b")));
}

TEST(FileSystemManagement, TellsWhenADeletionFailed)
{
    const TemporaryFolder folder;
    const std::string file = folder.write("file", "");

    EXPECT_FALSE(FileSystemManagement::deleteFile(file));
    EXPECT_TRUE(FileSystemManagement::deleteFile(file));
}
