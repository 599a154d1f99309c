#include "SafeFile.h"
#include "SystemCallFaults.h"
#include "TemporaryFolder.h"

#include <cerrno>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using testing::ElementsAre;

/// A file in a folder that takes no new ones: the third opening, which is to make one, fails.
class WritingInPlace : public testing::Test {
protected:
    WritingInPlace() { folder.write("file", "the old content"); }

    std::string replace(int refusal = EACCES)
    {
        constexpr int creating = 3;
        faults.fail("openat", refusal, creating);
        return SafeFile::replace(path, "the new content", SafeFile::Backup::none);
    }
    std::string readForChange() const
    {
        std::string content;
        return SafeFile::readForChange(path, content);
    }

    TemporaryFolder folder;
    const std::string path = folder.file("file");
    SystemCallFaults faults;
};

/// With an error that a system call of the test fails with.
class WithError : public WritingInPlace, public testing::WithParamInterface<int> {};

using Refusals = WithError;
using LocksThatAreMissing = WithError;
using LocksThatAreTaken = WithError;

std::string errorName(const testing::TestParamInfo<int>& row)
{
    return strerrorname_np(row.param);
}

} // namespace

TEST_F(WritingInPlace, GoesToTheStartWritesCutsAndSyncsUnderOneLock)
{
    EXPECT_EQ(replace(), "");

    EXPECT_THAT(
        faults.steps(), ElementsAre(
                            "openat",                            // the folder
                            "openat", "fstat", "fcntl",          // the old version
                            "fstat", "read", "read", "fstat",    //
                            "getentropy", "openat", "unlinkat",  // no new file
                            "openat", "fstat", "fstat", "fcntl", // the file
                            "fstat", "read", "read",             // what may be put back
                            "lseek", "write", "ftruncate", "fsync"));
}

TEST_F(WritingInPlace, KeepsOthersFromTheFileUntilItIsSynced)
{
    for (const char* step : {"lseek", "write", "ftruncate", "fsync"}) {
        std::string meanwhile;
        faults.interrupt(step, "", [&] { meanwhile = readForChange(); });

        EXPECT_EQ(replace(), "");

        EXPECT_EQ(meanwhile, "reading the file: Another process writes it") << step;
    }
}

TEST_P(Refusals, LeadToWritingInPlace)
{
    EXPECT_EQ(replace(GetParam()), "");

    EXPECT_EQ(folder.read("file"), "the new content");
}

INSTANTIATE_TEST_SUITE_P(SafeFile, Refusals, testing::Values(EACCES, EPERM, EROFS), errorName);

TEST_P(LocksThatAreMissing, KeepNothingFromBeingReadOrWritten)
{
    faults.fail("fcntl", GetParam());
    EXPECT_EQ(readForChange(), "");

    faults.fail("fcntl", GetParam(), 1);
    faults.fail("fcntl", GetParam(), 2);
    EXPECT_EQ(replace(), "");

    EXPECT_EQ(folder.read("file"), "the new content");
}

// What file systems without locks answer.
INSTANTIATE_TEST_SUITE_P(
    SafeFile, LocksThatAreMissing, testing::Values(ENOLCK, EINVAL, ENOSYS, EOPNOTSUPP), errorName);

TEST_P(LocksThatAreTaken, KeepTheFileFromBeingRead)
{
    faults.fail("fcntl", GetParam());

    EXPECT_EQ(readForChange(), "reading the file: Another process writes it");
}

TEST_P(LocksThatAreTaken, KeepTheFileFromBeingWritten)
{
    constexpr int exclusive = 2;
    faults.fail("fcntl", GetParam(), exclusive);

    EXPECT_EQ(replace(), "writing the file in place: Another process uses it");

    EXPECT_EQ(folder.read("file"), "the old content");
}

// Either may stand for a lock of somebody else's.
INSTANTIATE_TEST_SUITE_P(SafeFile, LocksThatAreTaken, testing::Values(EACCES, EAGAIN), errorName);
