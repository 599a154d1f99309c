#include "DeepFolder.h"
#include "FileSystemManagement.h"
#include "OrdinaryUser.h"
#include "SystemCallFaults.h"
#include "TemporaryFolder.h"

#include <cerrno>
#include <filesystem>
#include <string>

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

// An ordinary user can make no device: a file stands in for each kind.
TEST_F(DeleteFolder, LeavesSocketsAndDevices)
{
    for (const int kind : {S_IFSOCK, S_IFCHR, S_IFBLK}) {
        SystemCallFaults faults;
        faults.claimKind("file", static_cast<mode_t>(kind));

        EXPECT_FALSE(deleteFolder("doomed", true)) << kind;

        EXPECT_TRUE(fs::exists(path("doomed/file"))) << kind;
        EXPECT_TRUE(fs::exists(path("doomed/sub/deep/file"))) << kind;
    }
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
    nest(path("doomed"), 20);

    EXPECT_TRUE(withThreeDescriptors([&] { return deleteFolder("doomed", true); }));

    EXPECT_FALSE(fs::exists(path("doomed")));
}

TEST_F(DeleteFolder, TellsOfEntriesInAFolderThatMayBeReadAndNotSearched)
{
    fs::permissions(m_folder.path(), fs::perms{0755});
    fs::create_directory(path("empty"));
    for (const char* folder : {"doomed", "empty"})
        fs::permissions(path(folder), fs::perms{0444});

    EXPECT_TRUE(asOrdinaryUser([&] { return deleteFolder("doomed", false); }));
    EXPECT_TRUE(asOrdinaryUser([&] { return !deleteFolder("empty", false); }));
    fs::permissions(path("doomed"), fs::perms{0700});

    EXPECT_TRUE(fs::exists(path("doomed/file")));
    EXPECT_TRUE(fs::exists(path("doomed/sub/deep/file")));
}

TEST_F(DeleteFolder, TellsFalseForAFolderThatMayNotBeRead)
{
    fs::permissions(m_folder.path(), fs::perms{0755});
    fs::permissions(path("doomed"), fs::perms{0333});

    EXPECT_TRUE(asOrdinaryUser([&] { return !deleteFolder("doomed", false); }));
    fs::permissions(path("doomed"), fs::perms{0700});

    EXPECT_TRUE(fs::exists(path("doomed/file")));
}

TEST_F(DeleteFolder, RemovesEmptySubFoldersThatCannotBeOpened)
{
    fs::permissions(m_folder.path(), fs::perms{0755});
    fs::create_directory(path("open"));
    fs::permissions(path("open"), fs::perms{0777});
    for (const unsigned int mode : {0000U, 0111U, 0444U}) {
        const std::string name = "open/" + std::to_string(mode);
        fs::create_directory(path(name));
        fs::permissions(path(name), fs::perms{mode});
    }

    EXPECT_TRUE(asOrdinaryUser([&] { return deleteFolder("open", false); }));

    EXPECT_TRUE(fs::is_empty(path("open")));
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
        constexpr int wanted = O_NOFOLLOW | O_DIRECTORY | O_CLOEXEC;
        EXPECT_EQ(call.flags & wanted, wanted);
        ++opened;
    }
    EXPECT_EQ(opened, 2);
}
