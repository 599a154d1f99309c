#include "FileModeMask.h"
#include "FileSystemManagement.h"
#include "FullDisk.h"
#include "OrdinaryUser.h"
#include "SystemCallFaults.h"
#include "TemporaryFolder.h"

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <limits>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace {

using testing::ElementsAre;

/// A folder for one test; the file mode mask, which copying changes, is put back.
class Copying : public testing::Test {
protected:
    std::string path(const std::string& name) const { return m_folder.file(name); }
    bool copy(const std::string& source, const std::string& destination) const
    {
        return FileSystemManagement::Copy(path(source), path(destination));
    }
    bool copyFolder(const std::string& pattern) const
    {
        return FileSystemManagement::copyFolder(path("source"), path("destination"), pattern);
    }
    void link(const std::string& target, const std::string& name) const
    {
        ASSERT_EQ(symlink(target.c_str(), path(name).c_str()), 0);
    }
    void makeFifo(const std::string& name) const { ASSERT_EQ(mkfifo(path(name).c_str(), 0600), 0); }
    std::vector<std::string> copied() const
    {
        std::vector<std::string> names;
        for (const auto& entry : fs::recursive_directory_iterator(path("destination")))
            names.push_back(fs::relative(entry.path(), path("destination")));
        std::sort(names.begin(), names.end());
        return names;
    }

    TemporaryFolder m_folder;
    FileModeMask m_mask{022};
};

using FileCopy = Copying;

/// source/: a.cfg, a.cfg.old, a.txt, sub/: b.cfg, c
class FolderCopy : public Copying {
protected:
    FolderCopy()
    {
        fs::create_directories(path("source/sub"));
        for (const char* name : {"a.cfg", "a.cfg.old", "a.txt", "sub/b.cfg", "sub/c"})
            m_folder.write(std::string("source/") + name, name);
    }
};

} // namespace

TEST_F(FileCopy, HoldsEveryByte)
{
    const std::string content = std::string(200000, 'x') + std::string("\0\r\n\xff", 4);
    m_folder.write("source", content);

    EXPECT_TRUE(copy("source", "destination"));

    EXPECT_EQ(m_folder.read("destination"), content);
    EXPECT_EQ(m_folder.read("source"), content);
}

TEST_F(FileCopy, ReplacesALongerContent)
{
    m_folder.write("source", "new");
    m_folder.write("destination", "old and longer");

    EXPECT_TRUE(copy("source", "destination"));

    EXPECT_EQ(m_folder.read("destination"), "new");
}

TEST_F(FileCopy, OfAnEmptyFileSucceeds)
{
    m_folder.write("source", "");

    EXPECT_TRUE(copy("source", "destination"));

    EXPECT_TRUE(fs::is_empty(path("destination")));
}

TEST_F(FileCopy, IsForTheOwnerAloneToWriteThoughTheMaskIsZero)
{
    m_folder.write("source", "content");
    umask(0);

    EXPECT_TRUE(copy("source", "destination"));

    EXPECT_EQ(fs::status(path("destination")).permissions(), fs::perms{0644});
}

TEST_F(FileCopy, OfAnEmptyPathFailsAndLeavesTheDestination)
{
    m_folder.write("destination", "old");

    EXPECT_FALSE(FileSystemManagement::Copy("", path("destination")));

    EXPECT_EQ(m_folder.read("destination"), "old");
}

// Kept: the destination is opened first.
TEST_F(FileCopy, EmptiesTheDestinationBeforeItFindsTheSourceMissing)
{
    m_folder.write("destination", "old");

    EXPECT_FALSE(copy("missing", "destination"));
    EXPECT_FALSE(copy("missing", "new"));

    EXPECT_TRUE(fs::is_empty(path("destination")));
    EXPECT_TRUE(fs::is_empty(path("new")));
}

TEST_F(FileCopy, OntoItselfEmptiesTheFile)
{
    m_folder.write("source", "content");

    EXPECT_TRUE(copy("source", "source"));

    EXPECT_TRUE(fs::is_empty(path("source")));
}

TEST_F(FileCopy, FollowsLinks)
{
    m_folder.write("source", "content");
    m_folder.write("target", "old");
    link("source", "linkToSource");
    link("target", "linkToTarget");

    EXPECT_TRUE(copy("linkToSource", "linkToTarget"));

    EXPECT_EQ(m_folder.read("target"), "content");
    EXPECT_TRUE(fs::is_symlink(path("linkToTarget")));
}

TEST_F(FileCopy, FailsForAFolderOnEitherSide)
{
    m_folder.write("file", "content");
    fs::create_directory(path("folder"));

    EXPECT_FALSE(copy("folder", "destination"));
    EXPECT_FALSE(copy("file", "folder"));
    EXPECT_FALSE(copy("file", "missing/destination"));

    EXPECT_EQ(m_folder.read("file"), "content");
}

TEST_F(FileCopy, FailsForAFifoOrADeviceWithoutWaiting)
{
    m_folder.write("file", "content");
    makeFifo("fifo");

    EXPECT_FALSE(copy("fifo", "destination"));
    EXPECT_FALSE(copy("file", "fifo"));
    EXPECT_FALSE(FileSystemManagement::Copy("/dev/null", path("destination")));
}

TEST_F(FileCopy, FailsWhenTheDestinationDoesNotFit)
{
    m_folder.write("source", std::string(1001, 'x'));

    EXPECT_TRUE(onFullDisk(1000, [&] { return !copy("source", "destination"); }));
}

TEST_F(FileCopy, FailsWhenAnyStepFails)
{
    m_folder.write("source", "content");
    for (int nth = 1;; ++nth) {
        SystemCallFaults faults;
        faults.failAny(EIO, nth);

        const bool result = copy("source", "destination");

        const bool happened = faults.counted() >= nth;
        EXPECT_EQ(result, !happened) << nth;
        if (!happened)
            break;
    }
    EXPECT_EQ(m_folder.read("destination"), "content");
}

TEST_F(FileCopy, GoesOnWhereAPartWasTaken)
{
    m_folder.write("source", "content");
    SystemCallFaults faults;
    faults.limitTransfers(2);

    EXPECT_TRUE(copy("source", "destination"));

    EXPECT_EQ(m_folder.read("destination"), "content");
}

TEST_F(FileCopy, FailsForASizeThatNoMemoryHolds)
{
    m_folder.write("source", "content");
    SystemCallFaults faults;
    faults.claimSize(std::numeric_limits<off_t>::max());

    EXPECT_FALSE(copy("source", "destination"));
}

TEST_F(FolderCopy, HoldsTheWholeTree)
{
    EXPECT_TRUE(copyFolder("*"));

    EXPECT_THAT(copied(), ElementsAre("a.cfg", "a.cfg.old", "a.txt", "sub", "sub/b.cfg", "sub/c"));
    EXPECT_EQ(m_folder.read("destination/sub/b.cfg"), "sub/b.cfg");
}

TEST_F(FolderCopy, OpensNewFoldersToEverybodyAndLeavesTheMaskAtZero)
{
    umask(077);

    EXPECT_TRUE(copyFolder("*"));

    EXPECT_EQ(fs::status(path("destination")).permissions(), fs::perms{0777});
    EXPECT_EQ(fs::status(path("destination/sub")).permissions(), fs::perms{0777});
    EXPECT_EQ(FileModeMask::current(), 0U);
}

TEST_F(FolderCopy, SetsTheMaskEvenWhenItFails)
{
    EXPECT_FALSE(FileSystemManagement::copyFolder(path("missing"), path("destination"), "*"));

    EXPECT_EQ(FileModeMask::current(), 0U);
    EXPECT_FALSE(fs::exists(path("destination")));
}

TEST_F(FolderCopy, GoesIntoAFolderThatExists)
{
    fs::create_directories(path("destination/sub"));
    m_folder.write("destination/a.txt", "former");
    m_folder.write("destination/own", "kept");

    EXPECT_TRUE(copyFolder(""));

    EXPECT_EQ(m_folder.read("destination/a.txt"), "a.txt");
    EXPECT_EQ(m_folder.read("destination/own"), "kept");
    EXPECT_EQ(m_folder.read("destination/sub/c"), "sub/c");
}

TEST_F(FolderCopy, FailsWithoutAFolderToCopy)
{
    EXPECT_FALSE(FileSystemManagement::copyFolder(path("source/a.txt"), path("destination"), "*"));
    EXPECT_FALSE(FileSystemManagement::copyFolder("", path("destination"), "*"));
}

TEST_F(FolderCopy, FailsWhereNoFolderCanStand)
{
    m_folder.write("destination", "in the way");

    EXPECT_FALSE(copyFolder("*"));
    EXPECT_FALSE(FileSystemManagement::copyFolder(path("source"), "", "*"));
}

TEST_F(FolderCopy, FailsWhereASubFolderCannotBeMade)
{
    fs::permissions(m_folder.path(), fs::perms{0755});
    fs::create_directory(path("destination"));
    fs::permissions(path("destination"), fs::perms{0555});

    EXPECT_TRUE(asOrdinaryUser([this] { return !copyFolder("*"); }));

    EXPECT_TRUE(fs::is_empty(path("destination")));
}

TEST_F(FolderCopy, GoesOnBehindASubFolderThatAFileIsInTheWayOf)
{
    m_folder.write("source/z.txt", "z.txt");
    fs::create_directory(path("destination"));
    m_folder.write("destination/sub", "in the way");

    EXPECT_TRUE(copyFolder("*"));

    EXPECT_THAT(copied(), ElementsAre("a.cfg", "a.cfg.old", "a.txt", "sub", "z.txt"));
    EXPECT_EQ(m_folder.read("destination/sub"), "in the way");
}

TEST_F(FolderCopy, GoesOnBehindAFileThatCannotBeCopied)
{
    fs::create_directories(path("destination/a.cfg"));

    EXPECT_TRUE(copyFolder("*"));

    EXPECT_THAT(copied(), ElementsAre("a.cfg", "a.cfg.old", "a.txt", "sub", "sub/b.cfg", "sub/c"));
    EXPECT_TRUE(fs::is_directory(path("destination/a.cfg")));
}

TEST_F(FolderCopy, GoesOnBehindASubFolderWhoseCopyingEnds)
{
    link("nowhere", "source/sub/a.dangling");
    m_folder.write("source/z.txt", "z.txt");

    EXPECT_TRUE(copyFolder("*"));

    EXPECT_THAT(copied(), ElementsAre("a.cfg", "a.cfg.old", "a.txt", "sub", "z.txt"));
    EXPECT_EQ(m_folder.read("destination/z.txt"), "z.txt");
}

TEST_F(FolderCopy, FailsAtAnEntryThatLeadsNowhere)
{
    link("nowhere", "source/a.dangling");

    EXPECT_FALSE(copyFolder("*"));

    EXPECT_FALSE(fs::exists(path("destination/a.txt")));
}

TEST_F(FolderCopy, FailsForAFolderThatCannotBeListed)
{
    SystemCallFaults faults;
    faults.fail("readdir", EIO, 2);

    EXPECT_FALSE(copyFolder("*"));
}

TEST_F(FolderCopy, TakesTheFirstOfSeveralStarsOutOfThePattern)
{
    const std::vector<std::pair<std::string, std::string>> patternsAndNames{
        {"*.*x*.*", "x*.*"}, {"*.y*.z", ".y*.z"}, {"*z*", "z*"}};
    for (const auto& [pattern, name] : patternsAndNames) {
        m_folder.write("source/" + name, "");

        EXPECT_TRUE(copyFolder(pattern));

        EXPECT_TRUE(fs::exists(path("destination/" + name))) << pattern;
    }
}

TEST_F(FolderCopy, FollowsLinks)
{
    link("a.txt", "source/link.txt");
    link("sub", "source/link");

    EXPECT_TRUE(copyFolder("*"));

    EXPECT_FALSE(fs::is_symlink(path("destination/link.txt")));
    EXPECT_EQ(m_folder.read("destination/link.txt"), "a.txt");
    EXPECT_FALSE(fs::is_symlink(path("destination/link")));
    EXPECT_EQ(m_folder.read("destination/link/c"), "sub/c");
}

TEST_F(FolderCopy, LeavesOutWhatIsNeitherFileNorFolder)
{
    makeFifo("source/fifo");

    EXPECT_TRUE(copyFolder("*"));

    EXPECT_FALSE(fs::exists(path("destination/fifo")));
    EXPECT_TRUE(fs::exists(path("destination/sub/c")));
}

TEST_F(FolderCopy, EndsWhenAFolderIsCopiedIntoItself)
{
    const std::string name(200, 'x');

    EXPECT_TRUE(FileSystemManagement::copyFolder(path("source"), path("source/" + name), "*"));

    EXPECT_TRUE(fs::exists(path("source/" + name + "/" + name)));
}

namespace {

struct Pattern {
    std::string name;
    std::string pattern;
    std::vector<std::string> copied;

    friend void PrintTo(const Pattern& row, std::ostream* out) { *out << row.name; }
};

class FolderCopyPattern : public FolderCopy, public testing::WithParamInterface<Pattern> {};

} // namespace

TEST_P(FolderCopyPattern, ChoosesFilesByItsFixedPart)
{
    m_folder.write("source/*x.b", "");

    EXPECT_TRUE(copyFolder(GetParam().pattern));

    EXPECT_THAT(copied(), testing::ElementsAreArray(GetParam().copied));
}

INSTANTIATE_TEST_SUITE_P(
    Table, FolderCopyPattern,
    testing::Values(
        Pattern{"All", "*.*", {"*x.b", "a.cfg", "a.cfg.old", "a.txt", "sub", "sub/b.cfg", "sub/c"}},
        Pattern{"Star", "*", {"*x.b", "a.cfg", "a.cfg.old", "a.txt", "sub", "sub/b.cfg", "sub/c"}},
        Pattern{"Empty", "", {"*x.b", "a.cfg", "a.cfg.old", "a.txt", "sub", "sub/b.cfg", "sub/c"}},
        Pattern{"Ending", "*.cfg", {"a.cfg", "a.cfg.old", "sub", "sub/b.cfg"}},
        Pattern{"EndingIsAnywhere", "*.old", {"a.cfg.old", "sub"}},
        Pattern{"DotIsKept", "*.c", {"a.cfg", "a.cfg.old", "sub", "sub/b.cfg"}},
        Pattern{"WithoutStar", "b.c", {"sub", "sub/b.cfg"}},
        Pattern{"StarBehind", "a.t*", {"a.txt", "sub"}},
        Pattern{"StarBeforeADotGoesFirst", "*x*.b", {"*x.b", "sub"}},
        Pattern{"AllInTheMiddle", "a*.*.txt", {"a.txt", "sub"}},
        Pattern{"QuestionMarkIsNoWildcard", "?", {"sub"}},
        Pattern{"SecondStarIsReducedOneLevelDown", "**", {"*x.b", "sub", "sub/b.cfg", "sub/c"}},
        Pattern{"InThePathAlone", "source", {"sub"}}, Pattern{"NoMatch", "*.none", {"sub"}}),
    [](const auto& row) { return row.param.name; });
