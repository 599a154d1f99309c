#include "FileModeMask.h"
#include "FileSystemManagement.h"
#include "OrdinaryUser.h"
#include "SystemCallFaults.h"
#include "TemporaryFolder.h"

#include <filesystem>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace {

/// A folder for one test; the file mode mask, which making folders changes, is put back.
class MakeFolder : public testing::Test {
protected:
    std::string path(const std::string& name) const { return m_folder.file(name); }
    fs::perms modeOf(const std::string& name) const { return fs::status(path(name)).permissions(); }

    TemporaryFolder m_folder;
    FileModeMask m_mask{022};
};

/// The folders that another process makes right before this one can.
class FoldersMadeMeanwhile : public MakeFolder,
                             public testing::WithParamInterface<std::vector<std::string>> {
protected:
    void makeMeanwhile(const std::vector<std::string>& folders, std::size_t next = 0)
    {
        if (next == folders.size())
            return;
        m_faults.interrupt("mkdir", path(folders[next]), [this, &folders, next] {
            fs::create_directory(path(folders[next]));
            makeMeanwhile(folders, next + 1);
        });
    }

    SystemCallFaults m_faults;
};

} // namespace

TEST_F(MakeFolder, GivesEachNewFolderTheModeAndLeavesAnOldOneAlone)
{
    umask(077);
    fs::permissions(m_folder.path(), fs::perms{0711});

    EXPECT_TRUE(FileSystemManagement::makeFolder(path("a//b/"), 0755));

    EXPECT_EQ(modeOf("a"), fs::perms{0755});
    EXPECT_EQ(modeOf("a/b"), fs::perms{0755});
    EXPECT_EQ(modeOf(""), fs::perms{0711});
    EXPECT_EQ(FileModeMask::current(), 0U);
}

TEST_F(MakeFolder, IsContentWithAFolderThatExists)
{
    fs::create_directory(path("a"));
    fs::create_symlink("a", path("link"));

    EXPECT_TRUE(FileSystemManagement::makeFolder(path("a"), 0755));
    EXPECT_TRUE(FileSystemManagement::makeFolder(path("link/b"), 0755));
    EXPECT_TRUE(FileSystemManagement::makeFolder("/", 0755));

    EXPECT_TRUE(fs::is_directory(path("a/b")));
}

TEST_F(MakeFolder, FailsForAnEmptyPathAndWhereSomethingElseStandsInTheWay)
{
    m_folder.write("file", "content");
    fs::create_symlink("nowhere", path("dangling"));

    EXPECT_FALSE(FileSystemManagement::makeFolder("", 0755));
    EXPECT_FALSE(FileSystemManagement::makeFolder(path("file"), 0755));
    EXPECT_FALSE(FileSystemManagement::makeFolder(path("file/below"), 0755));
    EXPECT_FALSE(FileSystemManagement::makeFolder(path("dangling"), 0755));

    EXPECT_EQ(m_folder.read("file"), "content");
}

TEST_F(MakeFolder, FailsWhereTheParentTakesNoFolder)
{
    fs::permissions(m_folder.path(), fs::perms{0555});

    EXPECT_TRUE(
        asOrdinaryUser([&] { return !FileSystemManagement::makeFolder(path("a/b"), 0755); }));
    fs::permissions(m_folder.path(), fs::perms{0700});

    EXPECT_FALSE(fs::exists(path("a")));
}

TEST_P(FoldersMadeMeanwhile, AreThereAsWell)
{
    makeMeanwhile(GetParam());

    EXPECT_TRUE(FileSystemManagement::makeFolder(path("a/b/c"), 0755));

    EXPECT_TRUE(fs::is_directory(path("a/b/c")));
}

// Kept: the call of the same purpose takes a lost race for a failure.
TEST_P(FoldersMadeMeanwhile, EndTheCreationOfFolders)
{
    makeMeanwhile(GetParam());

    EXPECT_FALSE(FileSystemManagement::createFolder(path("a/b/c")));
}

INSTANTIATE_TEST_SUITE_P(
    Levels, FoldersMadeMeanwhile,
    testing::Values(
        std::vector<std::string>{"a"}, std::vector<std::string>{"a/b"},
        std::vector<std::string>{"a/b/c"}, std::vector<std::string>{"a", "a/b"},
        std::vector<std::string>{"a", "a/b", "a/b/c"}),
    [](const auto& row) { return "Row" + std::to_string(row.index); });

// The one that is behind has nothing to make and so catches up: they race for one folder after the
// other.
TEST_F(MakeFolder, SucceedsInBothOfTwoProcesses)
{
    const auto countFailures = [&] {
        int failures = 0;
        for (int account = 0; account < 300; ++account) {
            const std::string folder = path(std::to_string(account) + "/scope/Logs");
            failures += FileSystemManagement::makeFolder(folder, 0700) ? 0 : 1;
        }
        return failures;
    };

    const pid_t rival = fork();
    if (rival == 0)
        _exit(countFailures() == 0 ? EXIT_SUCCESS : EXIT_FAILURE);
    const int failures = countFailures();
    int status = 0;
    ASSERT_EQ(waitpid(rival, &status, 0), rival);

    EXPECT_EQ(failures, 0);
    EXPECT_EQ(status, 0);
}
