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

TEST(FileSystemManagement, GivesEachNewFolderTheModeAndLeavesAnOldOneAlone)
{
    namespace fs = std::filesystem;
    const TemporaryFolder folder;
    fs::permissions(folder.path(), fs::perms{0711});

    EXPECT_TRUE(FileSystemManagement::createFolder(folder.file("a/b"), 0750));

    EXPECT_EQ(fs::status(folder.file("a")).permissions(), fs::perms{0750});
    EXPECT_EQ(fs::status(folder.file("a/b")).permissions(), fs::perms{0750});
    EXPECT_EQ(fs::status(folder.path()).permissions(), fs::perms{0711});
}

TEST(FileSystemManagement, TellsWhenADeletionFailed)
{
    const TemporaryFolder folder;
    const std::string file = folder.write("file", "");

    EXPECT_FALSE(FileSystemManagement::deleteFile(file));
    EXPECT_TRUE(FileSystemManagement::deleteFile(file));
}
