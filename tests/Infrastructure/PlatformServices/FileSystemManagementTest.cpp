#include "FileSystemManagement.h"

#include "FileModeMask.h"
#include "OrdinaryUser.h"
#include "SystemCallFaults.h"
#include "TemporaryFolder.h"

#include <filesystem>
#include <string>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace {

/// A folder for one test; the file mode mask, which some operations change, is put back.
class FileSystem : public testing::Test {
protected:
    std::string path(const std::string& name) const { return m_folder.file(name); }
    fs::perms modeOf(const std::string& name) const
    {
        return fs::symlink_status(path(name)).permissions();
    }
    void link(const std::string& target, const std::string& name) const
    {
        ASSERT_EQ(symlink(target.c_str(), path(name).c_str()), 0);
    }
    void makeFifo(const std::string& name) const { ASSERT_EQ(mkfifo(path(name).c_str(), 0600), 0); }

    TemporaryFolder m_folder;
    FileModeMask m_mask{022};
};

using ExistFile = FileSystem;
using ExistFolder = FileSystem;
using CreateFolder = FileSystem;
using CreateFile = FileSystem;
using DeleteFile = FileSystem;
using DeleteEmptyFolder = FileSystem;
using WithoutEffect = FileSystem;

} // namespace

TEST(FileSystemManagement, SeparatesFoldersByASlash)
{
    EXPECT_EQ(FileSystemManagement::getFolderSeparator(), '/');
}

TEST_F(ExistFile, CountsEveryKindOfEntry)
{
    m_folder.write("file", "");
    fs::create_directory(path("folder"));
    makeFifo("fifo");
    link("nowhere", "dangling");

    for (const char* name : {"file", "folder", "fifo", "dangling"})
        EXPECT_TRUE(FileSystemManagement::existFile(path(name))) << name;
    EXPECT_FALSE(FileSystemManagement::existFile(path("missing")));
    EXPECT_FALSE(FileSystemManagement::existFile(path("file/below")));
    EXPECT_FALSE(FileSystemManagement::existFile(""));
}

TEST_F(ExistFolder, CountsFoldersAndLinksToThem)
{
    m_folder.write("file", "");
    fs::create_directory(path("folder"));
    link("folder", "link");
    link("file", "linkToFile");
    link("nowhere", "dangling");

    EXPECT_TRUE(FileSystemManagement::existFolder(path("folder")));
    EXPECT_TRUE(FileSystemManagement::existFolder(path("folder/")));
    EXPECT_TRUE(FileSystemManagement::existFolder(path("link")));
    for (const char* name : {"file", "linkToFile", "dangling", "missing"})
        EXPECT_FALSE(FileSystemManagement::existFolder(path(name))) << name;
    EXPECT_FALSE(FileSystemManagement::existFolder(""));
}

TEST_F(CreateFolder, CreatesAllMissingParents)
{
    EXPECT_TRUE(FileSystemManagement::createFolder(path("a//b///c")));

    EXPECT_TRUE(fs::is_directory(path("a/b/c")));
}

TEST_F(CreateFolder, TakesASeparatorAtTheEnd)
{
    EXPECT_TRUE(FileSystemManagement::createFolder(path("a/b//")));

    EXPECT_TRUE(fs::is_directory(path("a/b")));
}

TEST_F(CreateFolder, TakesARelativePath)
{
    const fs::path former = fs::current_path();
    fs::current_path(m_folder.path());

    EXPECT_TRUE(FileSystemManagement::createFolder("a/b"));
    EXPECT_TRUE(FileSystemManagement::createFolder("c"));
    fs::current_path(former);

    EXPECT_TRUE(fs::is_directory(path("a/b")));
    EXPECT_TRUE(fs::is_directory(path("c")));
}

TEST_F(CreateFolder, OpensNewFoldersToEverybodyAndLeavesTheMaskAtZero)
{
    umask(077);

    EXPECT_TRUE(FileSystemManagement::createFolder(path("a/b")));

    EXPECT_EQ(modeOf("a"), fs::perms{0777});
    EXPECT_EQ(modeOf("a/b"), fs::perms{0777});
    EXPECT_EQ(FileModeMask::current(), 0U);
}

TEST_F(CreateFolder, IsContentWithAFolderThatExists)
{
    fs::create_directory(path("a"));
    m_folder.write("a/file", "content");
    fs::permissions(path("a"), fs::perms{0700});
    link("a", "link");

    EXPECT_TRUE(FileSystemManagement::createFolder(path("a")));
    EXPECT_TRUE(FileSystemManagement::createFolder(path("link/b")));
    EXPECT_TRUE(FileSystemManagement::createFolder("/"));

    EXPECT_EQ(modeOf("a"), fs::perms{0700});
    EXPECT_EQ(m_folder.read("a/file"), "content");
    EXPECT_TRUE(fs::is_directory(path("a/b")));
}

TEST_F(CreateFolder, FailsForAnEmptyPathAndLeavesTheMask)
{
    EXPECT_FALSE(FileSystemManagement::createFolder(""));

    EXPECT_EQ(FileModeMask::current(), 022U);
}

TEST_F(CreateFolder, FailsWhereSomethingElseStandsInTheWay)
{
    m_folder.write("file", "content");
    link("nowhere", "dangling");

    EXPECT_FALSE(FileSystemManagement::createFolder(path("file")));
    EXPECT_FALSE(FileSystemManagement::createFolder(path("file/below")));
    EXPECT_FALSE(FileSystemManagement::createFolder(path("dangling")));

    EXPECT_EQ(m_folder.read("file"), "content");
}

TEST_F(CreateFolder, FailsWhereTheParentTakesNoFolder)
{
    fs::permissions(m_folder.path(), fs::perms{0555});

    EXPECT_TRUE(asOrdinaryUser([&] { return !FileSystemManagement::createFolder(path("a/b")); }));
    fs::permissions(m_folder.path(), fs::perms{0700});

    EXPECT_FALSE(fs::exists(path("a")));
}

TEST_F(CreateFile, CreatesFolderAndFile)
{
    EXPECT_TRUE(FileSystemManagement::createFile(path("a/b"), "file"));
    EXPECT_TRUE(FileSystemManagement::createFile(path("a/c/"), "file"));

    EXPECT_TRUE(fs::is_regular_file(path("a/b/file")));
    EXPECT_TRUE(fs::is_regular_file(path("a/c/file")));
}

TEST_F(CreateFile, AddsNoSeparatorBehindABackslash)
{
    EXPECT_TRUE(FileSystemManagement::createFile(path("a\\"), "file"));

    EXPECT_TRUE(fs::is_regular_file(path("a\\file")));
    EXPECT_TRUE(fs::is_empty(path("a\\")));
}

TEST_F(CreateFile, LetsOnlyTheOwnerWriteTheNewFile)
{
    EXPECT_TRUE(FileSystemManagement::createFile(path("a"), "file"));

    EXPECT_EQ(FileModeMask::current(), 0U);
    EXPECT_EQ(modeOf("a/file"), fs::perms{0644});
}

TEST_F(CreateFile, KeepsTheContentOfAnExistingFile)
{
    m_folder.write("file", "content");

    EXPECT_TRUE(FileSystemManagement::createFile(m_folder.path(), "file"));

    EXPECT_EQ(m_folder.read("file"), "content");
}

TEST_F(CreateFile, OpensTheFileForAppend)
{
    SystemCallFaults calls;

    EXPECT_TRUE(FileSystemManagement::createFile(m_folder.path(), "file"));

    EXPECT_NE(calls.calls().at(0).flags & O_APPEND, 0);
}

TEST_F(CreateFile, FollowsALink)
{
    m_folder.write("target", "content");
    link("target", "link");
    link("new", "dangling");

    EXPECT_TRUE(FileSystemManagement::createFile(m_folder.path(), "link"));
    EXPECT_TRUE(FileSystemManagement::createFile(m_folder.path(), "dangling"));

    EXPECT_EQ(m_folder.read("target"), "content");
    EXPECT_TRUE(fs::is_regular_file(path("new")));
    EXPECT_TRUE(fs::is_symlink(path("dangling")));
}

TEST_F(CreateFile, FailsForAnEmptyFolder)
{
    const fs::path former = fs::current_path();
    fs::current_path(m_folder.path());

    EXPECT_FALSE(FileSystemManagement::createFile("", "file"));
    fs::current_path(former);

    EXPECT_TRUE(fs::is_empty(m_folder.path()));
    EXPECT_FALSE(fs::exists("/file"));
}

TEST_F(CreateFile, FailsWhereSomethingElseStandsInTheWay)
{
    m_folder.write("file", "content");
    fs::create_directory(path("folder"));
    makeFifo("fifo");

    EXPECT_FALSE(FileSystemManagement::createFile(path("file"), "below"));
    EXPECT_FALSE(FileSystemManagement::createFile(m_folder.path(), "folder"));
    EXPECT_FALSE(FileSystemManagement::createFile(m_folder.path(), "fifo"));
    EXPECT_FALSE(FileSystemManagement::createFile(m_folder.path(), ""));
}

// Kept: the result is inverted.
TEST_F(DeleteFile, TellsFalseWhenItRemovedTheFile)
{
    m_folder.write("file", "");

    EXPECT_FALSE(FileSystemManagement::deleteFile(path("file")));

    EXPECT_FALSE(fs::exists(path("file")));
}

TEST_F(DeleteFile, TellsTrueWhenItFailed)
{
    fs::create_directories(path("folder/inner"));

    EXPECT_TRUE(FileSystemManagement::deleteFile(path("missing")));
    EXPECT_TRUE(FileSystemManagement::deleteFile(path("folder")));
    EXPECT_TRUE(FileSystemManagement::deleteFile(""));

    EXPECT_TRUE(fs::exists(path("folder/inner")));
}

TEST_F(DeleteFile, RemovesAnEmptyFolderToo)
{
    fs::create_directory(path("empty"));

    EXPECT_FALSE(FileSystemManagement::deleteFile(path("empty")));

    EXPECT_FALSE(fs::exists(path("empty")));
}

TEST_F(DeleteFile, RemovesALinkAndNotItsTarget)
{
    m_folder.write("file", "");
    link("file", "link");

    EXPECT_FALSE(FileSystemManagement::deleteFile(path("link")));

    EXPECT_FALSE(fs::is_symlink(path("link")));
    EXPECT_TRUE(fs::exists(path("file")));
}

TEST_F(DeleteEmptyFolder, RemovesOnlyAnEmptyFolder)
{
    fs::create_directory(path("empty"));
    fs::create_directories(path("full/inner"));
    m_folder.write("file", "");

    EXPECT_TRUE(FileSystemManagement::DeleteEmptyFolder(path("empty")));
    EXPECT_FALSE(FileSystemManagement::DeleteEmptyFolder(path("full")));
    EXPECT_FALSE(FileSystemManagement::DeleteEmptyFolder(path("file")));
    EXPECT_FALSE(FileSystemManagement::DeleteEmptyFolder(path("missing")));
    EXPECT_FALSE(FileSystemManagement::DeleteEmptyFolder(""));

    EXPECT_FALSE(fs::exists(path("empty")));
    EXPECT_TRUE(fs::exists(path("full/inner")));
    EXPECT_TRUE(fs::exists(path("file")));
}

TEST_F(WithoutEffect, RemoveReadOnlyTellsFalse)
{
    m_folder.write("file", "");
    fs::permissions(path("file"), fs::perms{0444});

    EXPECT_FALSE(FileSystemManagement::RemoveReadOnly(path("file")));

    EXPECT_EQ(modeOf("file"), fs::perms{0444});
}

TEST_F(WithoutEffect, MoveTellsTrue)
{
    m_folder.write("file", "content");

    EXPECT_TRUE(FileSystemManagement::Move(path("file"), path("moved")));
    EXPECT_TRUE(FileSystemManagement::Move(path("missing"), path("moved")));

    EXPECT_EQ(m_folder.read("file"), "content");
    EXPECT_FALSE(fs::exists(path("moved")));
}

TEST_F(WithoutEffect, ReadParamFromIniFileIsEmptyWithoutItsDefault)
{
    const std::string file = m_folder.write("file.ini", "[section]\nkey=value\n");

    EXPECT_EQ(FileSystemManagement::ReadParamFromIniFile(file, "section", "key", "default"), "");
}
