#include "ChildProcess.h"
#include "FileSystemManagement.h"
#include "OrdinaryUser.h"
#include "SystemCallFaults.h"
#include "TemporaryFolder.h"

#include <cerrno>
#include <filesystem>
#include <string>
#include <utility>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
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
    /// Makes a chain of folders, each in the one before, longer than a path can be.
    void nest(const std::string& name, int levels) const
    {
        int folder = open(path(name).c_str(), O_DIRECTORY);
        for (int level = 0; level < levels; ++level) {
            ASSERT_EQ(mkdirat(folder, "x", 0700), 0);
            const int inner = openat(folder, "x", O_DIRECTORY);
            close(std::exchange(folder, inner));
        }
        close(folder);
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

TEST_F(DeleteFolder, RemovesATreeOfAnyDepthWithThreeDescriptors)
{
    nest("doomed", 5000);
    ASSERT_FALSE(fs::is_empty(path("doomed")));

    EXPECT_TRUE(inChildProcess([&] {
        // Those of whoever started the test may leave gaps, which would make room for more.
        close_range(STDERR_FILENO + 1, ~0U, 0);
        const rlim_t taken = static_cast<rlim_t>(dup(STDERR_FILENO)) + 1;
        const rlimit limit{taken + 3, taken + 3};
        return setrlimit(RLIMIT_NOFILE, &limit) == 0 && deleteFolder("doomed", true);
    }));

    EXPECT_FALSE(fs::exists(path("doomed")));
}

TEST_F(DeleteFolder, PassesOverAFolderThatMayNotBeSearched)
{
    fs::permissions(m_folder.path(), fs::perms{0755});
    for (const char* folder : {"doomed", "doomed/sub/deep"})
        fs::permissions(path(folder), fs::perms{0777});
    fs::permissions(path("doomed/sub"), fs::perms{0444});
    fs::create_directory(path("doomed/another"));
    fs::create_directory(path("doomed/zlast"));

    EXPECT_TRUE(asOrdinaryUser([&] { return !deleteFolder("doomed", true); }));
    fs::permissions(path("doomed/sub"), fs::perms{0700});

    EXPECT_TRUE(fs::exists(path("doomed/sub/deep/file")));
    EXPECT_FALSE(fs::exists(path("doomed/another")));
    EXPECT_FALSE(fs::exists(path("doomed/file")));
    EXPECT_FALSE(fs::exists(path("doomed/zlast")));
}

TEST_F(DeleteFolder, EndsWhereTheFolderThatItIsInIsMovedAway)
{
    SystemCallFaults faults;
    faults.interruptOpening("..", [&] { fs::rename(path("doomed/sub/deep"), path("kept/deep")); });

    EXPECT_FALSE(deleteFolder("doomed", true));

    EXPECT_TRUE(fs::exists(path("kept/file")));
    EXPECT_TRUE(fs::is_empty(path("kept/deep")));
    EXPECT_TRUE(fs::exists(path("doomed/sub")));
}

TEST_F(DeleteFolder, LeavesASubFolderThatIsMovedAwayBetweenItsOpeningAndTheLookAbove)
{
    fs::remove_all(path("doomed/sub"));
    fs::create_directory(path("doomed/moving"));
    m_folder.write("doomed/moving/file", "");
    SystemCallFaults faults;
    faults.interrupt(
        "fstatat", "..", [&] { fs::rename(path("doomed/moving"), path("kept/moving")); });

    EXPECT_TRUE(deleteFolder("doomed", true));

    EXPECT_TRUE(fs::exists(path("kept/moving/file")));
}

// The number of a folder is its own on one device alone.
TEST_F(DeleteFolder, LeavesASubFolderWhoseFolderAboveIsOfTheSameNumberOnAnotherDevice)
{
    struct stat status {};
    ASSERT_EQ(stat(path("doomed").c_str(), &status), 0);
    SystemCallFaults faults;
    faults.claimDevice("..", status.st_dev + 1);

    EXPECT_FALSE(deleteFolder("doomed", true));

    EXPECT_TRUE(fs::exists(path("doomed/sub/deep/file")));
    EXPECT_FALSE(fs::exists(path("doomed/file")));
}

// A link put in a sub-folder's place meanwhile must lead nowhere.
TEST_F(DeleteFolder, ReachesSubFoldersFromTheOpenFolderWithoutFollowingLinks)
{
    SystemCallFaults faults;

    EXPECT_TRUE(deleteFolder("doomed", true));

    int opened = 0;
    for (const SystemCallFaults::Call& call : faults.calls()) {
        if (call.name != "openat" || (call.path != "sub" && call.path != "deep"))
            continue;
        EXPECT_NE(call.flags & O_NOFOLLOW, 0);
        ++opened;
    }
    EXPECT_EQ(opened, 2);
}
