#include "NamesIn.h"
#include "OrdinaryUser.h"
#include "SafeFile.h"
#include "SystemCallFaults.h"
#include "TemporaryFolder.h"

#include <cerrno>
#include <limits>
#include <set>
#include <string>
#include <vector>

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

using Backup = SafeFile::Backup;
using testing::AnyOf;
using testing::ElementsAre;

/// A file and its backup.
class SafeFileFaults : public testing::Test {
protected:
    SafeFileFaults()
    {
        m_folder.write("file", "the old content");
        m_folder.write("file.bak", "the older content");
    }

    std::string replace(Backup backup) const
    {
        return SafeFile::replace(m_folder.file("file"), "the new content", backup);
    }

    TemporaryFolder m_folder;
};

/// The error that the calls of a test fail with.
class FailingStep : public testing::TestWithParam<int> {};

std::string errorName(const testing::TestParamInfo<int>& row)
{
    return row.param == EIO ? "InputOutputError" : "DiskFull";
}

} // namespace

TEST_P(FailingStep, LeavesTheOldContentAndNoTemporaryFile)
{
    std::set<std::string> failed;
    bool happened = true;
    for (int nth = 1; happened; ++nth) {
        SCOPED_TRACE(nth);
        const TemporaryFolder folder;
        folder.write("file", "the old content");
        folder.write("file.bak", "the older content");
        SystemCallFaults faults;
        faults.failAny(GetParam(), nth);

        const std::string error =
            SafeFile::replace(folder.file("file"), "the new content", Backup::keep);

        happened = faults.counted() >= nth;
        if (happened)
            failed.insert(error.substr(0, error.find(':')));
        EXPECT_EQ(error.empty(), !happened);
        EXPECT_EQ(folder.read("file"), happened ? "the old content" : "the new content");
        EXPECT_THAT(folder.read("file.bak"), AnyOf("the old content", "the older content"));
        EXPECT_THAT(namesIn(folder), ElementsAre("file", "file.bak"));
    }
    EXPECT_THAT(
        failed, ElementsAre(
                    "choosing a temporary name", "creating the file", "giving the file its mode",
                    "giving the file its owner", "looking at the file", "opening the file",
                    "opening the folder", "reading the file", "renaming the file",
                    "syncing the file", "syncing the folder", "writing the file"));
}

TEST_P(FailingStep, LeavesNothingWhereThereWasNoFile)
{
    bool happened = true;
    for (int nth = 1; happened; ++nth) {
        SCOPED_TRACE(nth);
        const TemporaryFolder folder;
        SystemCallFaults faults;
        faults.failAny(GetParam(), nth);

        const std::string error =
            SafeFile::replace(folder.file("file"), "the new content", Backup::keep);

        happened = faults.counted() >= nth;
        EXPECT_EQ(error.empty(), !happened);
        EXPECT_EQ(namesIn(folder).empty(), happened);
    }
}

TEST_P(FailingStep, LeavesTheOldContentWhenWritingInPlace)
{
    std::set<std::string> failed;
    bool happened = true;
    for (int nth = 1; happened; ++nth) {
        SCOPED_TRACE(nth);
        const TemporaryFolder folder;
        folder.write("file", "the old content, longer than the new");
        SystemCallFaults faults;
        constexpr int creating = 3;
        faults.fail("openat", EACCES, creating);
        faults.failAny(GetParam(), nth);

        const std::string error =
            SafeFile::replace(folder.file("file"), "the new content", Backup::keep);

        happened = faults.counted() >= nth;
        const bool isNew = folder.read("file") == "the new content";
        EXPECT_EQ(error.empty(), isNew);
        EXPECT_TRUE(isNew || folder.read("file") == "the old content, longer than the new");
        EXPECT_THAT(namesIn(folder), ElementsAre("file"));
        failed.insert(error.substr(0, error.find(':')));
    }
    EXPECT_THAT(
        failed, testing::IsSupersetOf(
                    {"going to the start of the file", "writing the file", "cutting the file",
                     "syncing the file", "looking at the file"}));
}

INSTANTIATE_TEST_SUITE_P(Errors, FailingStep, testing::Values(EIO, ENOSPC), errorName);

TEST(SafeFileInPlace, TellsThatTheOldContentCouldNotBePutBack)
{
    const TemporaryFolder folder;
    folder.write("file", "the old content");
    SystemCallFaults faults;
    constexpr int creating = 3;
    faults.fail("openat", EACCES, creating);
    faults.fail("write", ENOSPC, 1);
    faults.fail("write", EIO, 2);

    EXPECT_EQ(
        SafeFile::replace(folder.file("file"), "the new content", Backup::none),
        "putting back the old content: Input/output error");
}

TEST(SafeFileFolder, IsNotWrittenInPlaceAfterASyncThatIsRefused)
{
    const TemporaryFolder folder;
    folder.write("file", "the old content");
    SystemCallFaults faults;
    constexpr int ofTheFolder = 2;
    faults.fail("fsync", EACCES, ofTheFolder);

    EXPECT_EQ(
        SafeFile::replace(folder.file("file"), "the new content", Backup::none),
        "syncing the folder: Permission denied");

    EXPECT_EQ(folder.read("file"), "the old content");
}

TEST(SafeFileFolder, ThatCannotBeSyncedHasTheOldFilePutBackWithItsModeAndOwner)
{
    const TemporaryFolder folder;
    const std::string path = folder.write("file", "the old content");
    const uid_t owner = geteuid() == 0 ? NOBODY : geteuid();
    ASSERT_EQ(chown(path.c_str(), owner, static_cast<gid_t>(-1)), 0);
    ASSERT_EQ(chmod(path.c_str(), 0640), 0);
    SystemCallFaults faults;
    constexpr int ofTheFolder = 2;
    faults.fail("fsync", EIO, ofTheFolder);

    EXPECT_EQ(
        SafeFile::replace(path, "the new content", Backup::none),
        "syncing the folder: Input/output error");

    struct stat status {};
    ASSERT_EQ(stat(path.c_str(), &status), 0);
    EXPECT_EQ(folder.read("file"), "the old content");
    EXPECT_EQ(status.st_mode & 07777U, 0640U);
    EXPECT_EQ(status.st_uid, owner);
}

TEST_F(SafeFileFaults, SyncsTheFileBeforeItTakesItsPlaceAndTheFolderAfter)
{
    SystemCallFaults faults;

    EXPECT_EQ(replace(Backup::none), "");

    EXPECT_THAT(
        faults.steps(), ElementsAre(
                            "openat",                        // the folder
                            "openat", "fstat", "fcntl",      // the old version
                            "fstat", "read", "read",         //
                            "fstat",                         //
                            "getentropy", "openat", "fstat", // the temporary file
                            "write", "fchown", "fchmod",     //
                            "fsync", "renameat", "fsync"));  // the file, its place, the folder
}

TEST_F(SafeFileFaults, MakesATemporaryFileThatNobodyForeseesAndNobodyElseOpens)
{
    std::set<std::string> names;
    for (int round = 0; round < 2; ++round) {
        SystemCallFaults faults;
        EXPECT_EQ(replace(Backup::keep), "");
        for (const SystemCallFaults::Call& call : faults.calls()) {
            if (call.name != "openat" || (call.flags & O_CREAT) == 0)
                continue;
            names.insert(call.path);
            EXPECT_EQ(call.path.size(), std::string(".tav-").size() + 32);
            EXPECT_EQ(call.flags & (O_EXCL | O_NOFOLLOW), O_EXCL | O_NOFOLLOW);
            EXPECT_EQ(call.mode, 0600U);
        }
    }
    EXPECT_EQ(names.size(), 4U);
}

TEST_F(SafeFileFaults, NamesTheTemporaryFileByEveryBitThatIsDrawn)
{
    SystemCallFaults faults;
    faults.claimEntropy("\x01\x23\x45\x67\x89\xab\xcd\xef\xfe\xdc\xba\x98\x76\x54\x32\x10");

    EXPECT_EQ(replace(Backup::none), "");

    EXPECT_THAT(
        faults.calls(),
        testing::Contains(testing::Field(
            &SystemCallFaults::Call::path, ".tav-0123456789abcdeffedcba9876543210")));
}

TEST_F(SafeFileFaults, OpensNothingThatWaitsFollowsALinkOrReachesAChild)
{
    SystemCallFaults faults;
    faults.fail("fchown", EPERM);

    EXPECT_EQ(replace(Backup::keep), "");

    for (const SystemCallFaults::Call& call : faults.calls()) {
        if (call.name != "openat")
            continue;
        const bool isFolder = (call.flags & O_DIRECTORY) != 0;
        const int wanted = isFolder ? O_CLOEXEC : O_CLOEXEC | O_NONBLOCK | O_NOCTTY | O_NOFOLLOW;
        EXPECT_EQ(call.flags & wanted, wanted) << call.path;
        EXPECT_EQ(call.path.find('/') != std::string::npos, isFolder) << call.path;
    }
}

TEST_F(SafeFileFaults, WritesOnWhereAPartWasTaken)
{
    SystemCallFaults faults;
    faults.limitTransfers(2);

    EXPECT_EQ(replace(Backup::keep), "");
    EXPECT_EQ(SafeFile::read(m_folder.file("file")), "the new content");

    EXPECT_EQ(m_folder.read("file"), "the new content");
    EXPECT_EQ(m_folder.read("file.bak"), "the old content");
}

TEST_F(SafeFileFaults, AcceptsAFolderThatCannotBeSynced)
{
    SystemCallFaults faults;
    constexpr int folder = 2;
    faults.fail("fsync", EINVAL, folder);

    EXPECT_EQ(replace(Backup::none), "");

    EXPECT_EQ(m_folder.read("file"), "the new content");
}

TEST_F(SafeFileFaults, TellsWhenTheOldContentCouldNotBePutBack)
{
    SystemCallFaults faults;
    constexpr int folder = 2;
    faults.fail("fsync", EIO, folder);
    faults.fail("renameat", EROFS, 2);

    EXPECT_EQ(replace(Backup::none), "putting back the old content: Read-only file system");

    EXPECT_THAT(namesIn(m_folder), ElementsAre("file", "file.bak"));
}

TEST_F(SafeFileFaults, WriteInPlaceAFileWhoseOwnerCannotBeGiven)
{
    SystemCallFaults faults;
    faults.fail("fchown", EPERM);

    EXPECT_EQ(replace(Backup::keep), "");

    EXPECT_EQ(m_folder.read("file"), "the new content");
    EXPECT_EQ(m_folder.read("file.bak"), "the older content");
    EXPECT_THAT(namesIn(m_folder), ElementsAre("file", "file.bak"));
}

TEST_F(SafeFileFaults, WriteInPlaceAFileThatMayNotBeRenamedOver)
{
    SystemCallFaults faults;
    faults.fail("renameat", EPERM);

    EXPECT_EQ(replace(Backup::none), "");

    EXPECT_EQ(m_folder.read("file"), "the new content");
    EXPECT_THAT(namesIn(m_folder), ElementsAre("file", "file.bak"));
}

// Between the first look at the old content and the lock, another process has written a newer one.
TEST_F(SafeFileFaults, HaveTheContentPutBackThatTheFileHadUnderTheLock)
{
    SystemCallFaults faults;
    constexpr int creating = 3;
    faults.fail("openat", EACCES, creating);
    faults.fail("write", EIO);
    faults.interruptOpening("file", [&] {
        faults.interruptOpening("file", [&] { m_folder.write("file", "a newer content"); });
    });

    EXPECT_EQ(replace(Backup::none), "writing the file: Input/output error");

    EXPECT_EQ(m_folder.read("file"), "a newer content");
}

TEST_F(SafeFileFaults, TellWhyNothingIsReadForAChange)
{
    for (const char* step : {"openat", "fstat", "read"}) {
        SystemCallFaults faults;
        faults.fail(step, EIO);
        std::string content = "untouched";

        const std::string failure = SafeFile::readForChange(m_folder.file("file"), content);

        EXPECT_TRUE(failure.ends_with("the file: Input/output error")) << failure;
        EXPECT_EQ(content, "untouched");
    }
}

TEST_F(SafeFileFaults, ReadNothingWhenAStepFails)
{
    for (const char* step : {"openat", "fstat", "read"}) {
        SystemCallFaults faults;
        faults.fail(step, EIO);

        EXPECT_EQ(SafeFile::read(m_folder.file("file")), std::nullopt) << step;
    }
}

// As of a file that grows meanwhile.
TEST_F(SafeFileFaults, ReadNoMoreThanAskedWhateverTheSizeIsSaidToBe)
{
    SystemCallFaults faults;
    faults.limitTransfers(2);
    for (const off_t size : {off_t{0}, std::numeric_limits<off_t>::max()}) {
        faults.claimSize(size);
        const std::string path = m_folder.file("file");

        EXPECT_EQ(SafeFile::read(path, SafeFile::Links::refuse, 15), "the old content");
        EXPECT_EQ(SafeFile::read(path, SafeFile::Links::refuse, 14), std::nullopt);
    }
}

TEST_F(SafeFileFaults, ReadNothingOfASizeThatNoMemoryHolds)
{
    SystemCallFaults faults;
    faults.claimSize(std::numeric_limits<off_t>::max());

    EXPECT_EQ(SafeFile::read(m_folder.file("file")), std::nullopt);
    EXPECT_NE(replace(Backup::none), "");

    EXPECT_EQ(m_folder.read("file"), "the old content");
}
