#include "FileSystemManagement.h"
#include "OrdinaryUser.h"
#include "SystemCallFaults.h"
#include "TemporaryFolder.h"

#include <cerrno>
#include <filesystem>
#include <string>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace {

/// doomed/: file, sub/: deep/: file; and a folder "kept" with a file beside it.
class DeleteFolder : public testing::Test {
protected:
    DeleteFolder()
    {
        fs::create_directories(path("doomed/sub/deep"));
        m_folder.write("doomed/file", "");
        m_folder.write("doomed/sub/deep/file", "");
        fs::create_directory(path("kept"));
        m_folder.write("kept/file", "");
    }

    std::string path(const std::string& name) const { return m_folder.file(name); }
    bool deleteFolder(const std::string& name, bool removeSelf) const
    {
        return FileSystemManagement::deleteFolder(path(name), removeSelf);
    }
    void link(const std::string& target, const std::string& name) const
    {
        ASSERT_EQ(symlink(target.c_str(), path(name).c_str()), 0);
    }

    TemporaryFolder m_folder;
};

} // namespace

TEST_F(DeleteFolder, RemovesTheWholeTree)
{
    EXPECT_TRUE(deleteFolder("doomed", true));

    EXPECT_FALSE(fs::exists(path("doomed")));
    EXPECT_TRUE(fs::exists(path("kept/file")));
}

TEST_F(DeleteFolder, EmptiesTheFolderAndLeavesItWhenTold)
{
    EXPECT_TRUE(deleteFolder("doomed/", false));

    EXPECT_TRUE(fs::is_directory(path("doomed")));
    EXPECT_TRUE(fs::is_empty(path("doomed")));
}

TEST_F(DeleteFolder, TellsFalseForAnEmptyFolderThatStays)
{
    fs::create_directory(path("empty"));

    EXPECT_FALSE(deleteFolder("empty", false));
    EXPECT_TRUE(fs::exists(path("empty")));
    EXPECT_TRUE(deleteFolder("empty", true));
    EXPECT_FALSE(fs::exists(path("empty")));
}

TEST_F(DeleteFolder, TellsFalseWithoutAFolder)
{
    for (const bool removeSelf : {false, true}) {
        EXPECT_FALSE(deleteFolder("missing", removeSelf));
        EXPECT_FALSE(deleteFolder("kept/file", removeSelf));
        EXPECT_FALSE(FileSystemManagement::deleteFolder("", removeSelf));
    }
    EXPECT_TRUE(fs::exists(path("kept/file")));
}

TEST_F(DeleteFolder, RemovesLinksAndNotTheirTargets)
{
    link("../kept", "doomed/link");
    link("../../kept/file", "doomed/sub/link");
    link("nowhere", "doomed/dangling");

    EXPECT_TRUE(deleteFolder("doomed", true));

    EXPECT_TRUE(fs::exists(path("kept/file")));
}

TEST_F(DeleteFolder, FollowsALinkToTheFolderItselfAndLeavesTheLink)
{
    link("doomed", "link");

    EXPECT_FALSE(deleteFolder("link", true));

    EXPECT_TRUE(fs::is_empty(path("doomed")));
    EXPECT_TRUE(fs::is_symlink(path("link")));
}

TEST_F(DeleteFolder, LeavesWhatIsNoFileFolderOrLink)
{
    ASSERT_EQ(mkfifo(path("doomed/fifo").c_str(), 0600), 0);

    EXPECT_FALSE(deleteFolder("doomed", true));
    EXPECT_TRUE(fs::exists(path("doomed/fifo")));
    EXPECT_FALSE(fs::exists(path("doomed/sub")));

    EXPECT_TRUE(deleteFolder("doomed", false));
}

TEST_F(DeleteFolder, GoesOnBehindWhatItCannotRemove)
{
    fs::permissions(m_folder.path(), fs::perms{0755});
    fs::permissions(path("doomed"), fs::perms{0777});
    fs::permissions(path("doomed/sub/deep"), fs::perms{0555});
    m_folder.write("doomed/zfile", "");

    EXPECT_TRUE(asOrdinaryUser([&] { return !deleteFolder("doomed", true); }));
    fs::permissions(path("doomed/sub/deep"), fs::perms{0755});

    EXPECT_TRUE(fs::exists(path("doomed/sub/deep/file")));
    EXPECT_FALSE(fs::exists(path("doomed/file")));
    EXPECT_FALSE(fs::exists(path("doomed/zfile")));
}

TEST_F(DeleteFolder, TellsFalseForAFolderThatCannotBeListed)
{
    for (const char* step : {"openat", "fdopendir", "readdir"}) {
        SystemCallFaults faults;
        faults.fail(step, EIO);

        EXPECT_FALSE(deleteFolder("doomed", false)) << step;
    }
    EXPECT_TRUE(fs::exists(path("doomed/file")));
}

TEST_F(DeleteFolder, RemovesADeeplyNestedTree)
{
    std::string deep = path("doomed");
    for (int level = 0; level < 400; ++level)
        deep += "/x";
    fs::create_directories(deep);

    EXPECT_TRUE(deleteFolder("doomed", true));
}

// A link put in a sub-folder's place meanwhile must lead nowhere.
TEST_F(DeleteFolder, ReachesSubFoldersFromTheOpenFolderWithoutFollowingLinks)
{
    SystemCallFaults faults;

    EXPECT_TRUE(deleteFolder("doomed", true));

    int opened = 0;
    for (const SystemCallFaults::Call& call : faults.calls()) {
        if (call.path != "sub" && call.path != "deep")
            continue;
        EXPECT_NE(call.flags & O_NOFOLLOW, 0);
        ++opened;
    }
    EXPECT_EQ(opened, 2);
}
