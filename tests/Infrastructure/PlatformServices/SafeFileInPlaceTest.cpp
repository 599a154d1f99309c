#include "FileDescriptor.h"
#include "FullDisk.h"
#include "NamesIn.h"
#include "OrdinaryUser.h"
#include "SafeFile.h"
#include "TemporaryFolder.h"

#include <string>

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

using Backup = SafeFile::Backup;

ino_t inodeOf(const std::string& path)
{
    struct stat status {};
    EXPECT_EQ(stat(path.c_str(), &status), 0) << path;
    return status.st_ino;
}

/// A file in a folder that takes no new ones: opened to an ordinary user as its mode says.
class ClosedFolder : public testing::Test {
protected:
    void seal(mode_t folderMode, mode_t fileMode)
    {
        m_folder.write("file", "the old content");
        ASSERT_EQ(chmod(m_folder.file("file").c_str(), fileMode), 0);
        ASSERT_EQ(chmod(m_folder.path().c_str(), folderMode), 0);
    }
    ~ClosedFolder() override { chmod(m_folder.path().c_str(), 0700); }

    /// Whether an ordinary user who replaces the content is told so.
    bool replacingTells(const std::string& report) const
    {
        return asOrdinaryUser([&] {
            return SafeFile::replace(m_folder.file("file"), "new", Backup::keep) == report;
        });
    }

    TemporaryFolder m_folder;
};

} // namespace

TEST_F(ClosedFolder, HasItsFileWrittenInPlace)
{
    seal(0555, 0666);
    const ino_t before = inodeOf(m_folder.file("file"));

    EXPECT_TRUE(replacingTells(""));

    EXPECT_EQ(m_folder.read("file"), "new");
    EXPECT_EQ(inodeOf(m_folder.file("file")), before);
    EXPECT_THAT(namesIn(m_folder), testing::ElementsAre("file"));
}

TEST_F(ClosedFolder, HasItsFileWrittenInPlaceWhenItCannotBeListed)
{
    seal(0111, 0666);

    EXPECT_TRUE(replacingTells(""));

    EXPECT_EQ(m_folder.read("file"), "new");
}

TEST_F(ClosedFolder, KeepsAFileThatCannotBeWritten)
{
    seal(0555, 0444);

    EXPECT_TRUE(replacingTells("opening the file: Permission denied"));

    EXPECT_EQ(m_folder.read("file"), "the old content");
}

TEST_F(ClosedFolder, KeepsAFileThatHasAnotherName)
{
    const TemporaryFolder elsewhere;
    m_folder.write("file", "");
    ASSERT_EQ(link(m_folder.file("file").c_str(), elsewhere.file("victim").c_str()), 0);
    seal(0555, 0666);

    EXPECT_TRUE(replacingTells("writing the file in place: It has other names"));

    EXPECT_EQ(elsewhere.read("victim"), "the old content");
}

TEST_F(ClosedFolder, KeepsAFileThatAnotherProcessWritesInPlace)
{
    seal(0555, 0666);
    const FileDescriptor writer(open(m_folder.file("file").c_str(), O_WRONLY));
    ASSERT_EQ(lockf(writer.get(), F_TLOCK, 0), 0);

    EXPECT_TRUE(replacingTells("reading the file: Another process writes it"));

    EXPECT_EQ(m_folder.read("file"), "the old content");
}

TEST_F(ClosedFolder, KeepsAFileThatAnotherProcessReadsForAChange)
{
    seal(0555, 0666);
    const FileDescriptor reader(open(m_folder.file("file").c_str(), O_RDONLY));
    struct flock shared {};
    shared.l_type = F_RDLCK;
    ASSERT_EQ(fcntl(reader.get(), F_SETLK, &shared), 0);

    EXPECT_TRUE(replacingTells("writing the file in place: Another process uses it"));

    EXPECT_EQ(m_folder.read("file"), "the old content");
}

TEST_F(ClosedFolder, TakesNoNewFile)
{
    ASSERT_EQ(chmod(m_folder.path().c_str(), 0555), 0);

    EXPECT_TRUE(replacingTells("creating the file: Permission denied"));

    EXPECT_THAT(namesIn(m_folder), testing::IsEmpty());
}

TEST_F(ClosedFolder, HasTheOldContentPutBackWhenTheNewDoesNotFit)
{
    seal(0555, 0666);

    EXPECT_TRUE(asOrdinaryUser([&] {
        return onFullDisk(1000, [&] {
            return SafeFile::replace(m_folder.file("file"), std::string(1001, 'x'), Backup::none) ==
                   "writing the file: File too large";
        });
    }));

    EXPECT_EQ(m_folder.read("file"), "the old content");
}
