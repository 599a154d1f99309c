#include "SafeFile.h"

#include "FileDescriptor.h"
#include "FileModeMask.h"
#include "FullDisk.h"
#include "NamesIn.h"
#include "OrdinaryUser.h"
#include "TemporaryFolder.h"

#include <array>
#include <atomic>
#include <cstring>
#include <filesystem>
#include <functional>
#include <ostream>
#include <string>
#include <thread>
#include <vector>

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

namespace {

using Backup = SafeFile::Backup;
using testing::ElementsAre;

struct stat statusOf(const std::string& path)
{
    struct stat status {};
    EXPECT_EQ(lstat(path.c_str(), &status), 0) << path;
    return status;
}

mode_t modeOf(const std::string& path)
{
    return statusOf(path).st_mode & 07777U;
}

void makeSocket(const std::string& path)
{
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::strncpy(address.sun_path, path.c_str(), sizeof(address.sun_path) - 1);
    const int descriptor = socket(AF_UNIX, SOCK_STREAM, 0);
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-reinterpret-cast): the call's own convention
    EXPECT_EQ(bind(descriptor, reinterpret_cast<sockaddr*>(&address), sizeof(address)), 0);
    close(descriptor);
}

} // namespace

TEST(SafeFile, ReadsTheWholeContent)
{
    const TemporaryFolder folder;
    const std::string content = std::string(200000, 'x') + std::string("\0\r\n\xff", 4);
    folder.write("file", content);

    EXPECT_EQ(SafeFile::read(folder.file("file")), content);
}

TEST(SafeFile, ReadsNothingThatIsLongerThanAsked)
{
    const TemporaryFolder folder;
    const std::string content(200000, 'x');
    folder.write("file", content);
    const auto readAtMost = [&](std::size_t longest) {
        return SafeFile::read(folder.file("file"), SafeFile::Links::refuse, longest);
    };

    EXPECT_EQ(readAtMost(200000), content);
    EXPECT_EQ(readAtMost(199999), std::nullopt);
    EXPECT_EQ(readAtMost(0), std::nullopt);
}

TEST(SafeFile, ReadsAnEmptyFileAsEmpty)
{
    const TemporaryFolder folder;
    folder.write("file", "");

    EXPECT_EQ(SafeFile::read(folder.file("file")), "");
}

TEST(SafeFile, ReadsNothingWhereThereIsNoFile)
{
    const TemporaryFolder folder;

    EXPECT_EQ(SafeFile::read(folder.file("missing")), std::nullopt);
    EXPECT_EQ(SafeFile::read(folder.file("missing/file")), std::nullopt);
    EXPECT_EQ(SafeFile::read(""), std::nullopt);
}

TEST(SafeFile, ReadsNothingThatMayNotBeRead)
{
    const TemporaryFolder folder;
    folder.write("file", "content");
    chmod(folder.path().c_str(), 0755);
    chmod(folder.file("file").c_str(), 0);

    EXPECT_TRUE(
        asOrdinaryUser([&] { return SafeFile::read(folder.file("file")) == std::nullopt; }));
}

TEST(SafeFile, ReadsForAChangeTheContentWhichIsEmptyWhereThereIsNoFile)
{
    const TemporaryFolder folder;
    folder.write("file", "content");
    std::string content;

    EXPECT_EQ(SafeFile::readForChange(folder.file("file"), content), "");
    EXPECT_EQ(content, "content");

    EXPECT_EQ(SafeFile::readForChange(folder.file("missing"), content), "");
    EXPECT_EQ(content, "");
}

TEST(SafeFile, ReadsForAChangeNothingThatAnotherProcessWritesInPlace)
{
    const TemporaryFolder folder;
    folder.write("file", "half of the old");
    std::string content = "untouched";
    const FileDescriptor writer(open(folder.file("file").c_str(), O_WRONLY));
    ASSERT_EQ(lockf(writer.get(), F_TLOCK, 0), 0);

    EXPECT_EQ(
        SafeFile::readForChange(folder.file("file"), content),
        "reading the file: Another process writes it");

    EXPECT_EQ(content, "untouched");
}

TEST(SafeFile, KeepsNoHalfOfWhatAnotherProcessWritesInPlaceAsTheOldVersion)
{
    const TemporaryFolder folder;
    folder.write("file", "half of the old");
    const FileDescriptor writer(open(folder.file("file").c_str(), O_WRONLY));
    ASSERT_EQ(lockf(writer.get(), F_TLOCK, 0), 0);

    EXPECT_EQ(
        SafeFile::replace(folder.file("file"), "new", SafeFile::Backup::keep),
        "reading the file: Another process writes it");

    EXPECT_EQ(folder.read("file"), "half of the old");
    EXPECT_FALSE(std::filesystem::exists(folder.file("file.bak")));
}

TEST(SafeFile, ReadsThroughALinkOnlyWhenAsked)
{
    const TemporaryFolder folder;
    folder.write("file", "content");
    ASSERT_EQ(symlink("file", folder.file("link").c_str()), 0);

    EXPECT_EQ(SafeFile::read(folder.file("link")), std::nullopt);
    EXPECT_EQ(SafeFile::read(folder.file("link"), SafeFile::Links::follow), "content");
}

TEST(SafeFile, MakesANewFileThatOthersCanReadButNotWrite)
{
    const TemporaryFolder folder;

    for (const mode_t mask : {0U, 077U}) {
        const FileModeMask masked(mask);
        const std::string name = std::to_string(mask);

        EXPECT_EQ(SafeFile::replace(folder.file(name), "content", Backup::keep), "");

        EXPECT_EQ(folder.read(name), "content");
        EXPECT_EQ(modeOf(folder.file(name)), 0644U);
    }
    EXPECT_THAT(namesIn(folder), ElementsAre("0", "63"));
}

TEST(SafeFile, ReplacesTheContentAndLeavesNothingElseBehind)
{
    const TemporaryFolder folder;
    folder.write("file", "a longer old content");

    EXPECT_EQ(SafeFile::replace(folder.file("file"), std::string("n\0w", 3), Backup::none), "");

    EXPECT_EQ(folder.read("file"), std::string("n\0w", 3));
    EXPECT_THAT(namesIn(folder), ElementsAre("file"));
}

TEST(SafeFile, ReplacesByNothing)
{
    const TemporaryFolder folder;
    folder.write("file", "old");

    EXPECT_EQ(SafeFile::replace(folder.file("file"), "", Backup::none), "");

    EXPECT_EQ(folder.read("file"), "");
}

TEST(SafeFile, TakesAPathRelativeToTheCurrentFolder)
{
    const TemporaryFolder folder;
    folder.write("old", "old");

    EXPECT_TRUE(inChildProcess([&] {
        return chdir(folder.path().c_str()) == 0 &&
               SafeFile::replace("new", "content", Backup::none).empty() &&
               SafeFile::replace("./old", "content", Backup::keep).empty() &&
               SafeFile::read("new") == "content";
    }));

    EXPECT_EQ(folder.read("new"), "content");
    EXPECT_EQ(folder.read("old"), "content");
    EXPECT_THAT(namesIn(folder), ElementsAre("new", "old", "old.bak"));
}

TEST(SafeFile, KeepsModeAndOwnerOfTheReplacedFile)
{
    const TemporaryFolder folder;
    folder.write("file", "old");
    const uid_t owner = geteuid() == 0 ? 1234 : geteuid();
    const gid_t group = geteuid() == 0 ? 4321 : getegid();
    ASSERT_EQ(chown(folder.file("file").c_str(), owner, group), 0);
    ASSERT_EQ(chmod(folder.file("file").c_str(), 0640), 0);

    EXPECT_EQ(SafeFile::replace(folder.file("file"), "new", Backup::keep), "");

    for (const char* name : {"file", "file.bak"}) {
        EXPECT_EQ(modeOf(folder.file(name)), 0640U) << name;
        EXPECT_EQ(statusOf(folder.file(name)).st_uid, owner) << name;
        EXPECT_EQ(statusOf(folder.file(name)).st_gid, group) << name;
    }
}

TEST(SafeFile, HandsOnNoRightToRunAsTheOwner)
{
    const TemporaryFolder folder;
    folder.write("file", "old");
    ASSERT_EQ(chmod(folder.file("file").c_str(), 06755), 0);

    EXPECT_EQ(SafeFile::replace(folder.file("file"), "new", Backup::none), "");

    EXPECT_EQ(modeOf(folder.file("file")), 0755U);
}

TEST(SafeFile, KeepsTheReplacedVersionWhenAsked)
{
    const TemporaryFolder folder;
    folder.write("file", "first");

    EXPECT_EQ(SafeFile::replace(folder.file("file"), "second", Backup::keep), "");
    EXPECT_EQ(folder.read("file.bak"), "first");
    EXPECT_EQ(SafeFile::replace(folder.file("file"), "third", Backup::keep), "");
    EXPECT_EQ(folder.read("file.bak"), "second");
    EXPECT_EQ(SafeFile::replace(folder.file("file"), "fourth", Backup::none), "");
    EXPECT_EQ(folder.read("file.bak"), "second");

    EXPECT_EQ(folder.read("file"), "fourth");
    EXPECT_THAT(namesIn(folder), ElementsAre("file", "file.bak"));
}

TEST(SafeFile, NeverWritesTheBackupThroughALink)
{
    const TemporaryFolder folder;
    folder.write("file", "old");
    folder.write("victim", "untouched");
    ASSERT_EQ(symlink("victim", folder.file("file.bak").c_str()), 0);

    EXPECT_EQ(SafeFile::replace(folder.file("file"), "new", Backup::keep), "");

    EXPECT_EQ(folder.read("victim"), "untouched");
    EXPECT_TRUE(S_ISREG(statusOf(folder.file("file.bak")).st_mode));
    EXPECT_EQ(folder.read("file.bak"), "old");
}

TEST(SafeFile, NeverWritesThroughASecondNameOfTheFile)
{
    const TemporaryFolder folder;
    folder.write("victim", "untouched");
    ASSERT_EQ(link(folder.file("victim").c_str(), folder.file("file").c_str()), 0);
    ASSERT_EQ(link(folder.file("victim").c_str(), folder.file("file.bak").c_str()), 0);

    EXPECT_EQ(SafeFile::replace(folder.file("file"), "new", Backup::keep), "");

    EXPECT_EQ(folder.read("file"), "new");
    EXPECT_EQ(folder.read("victim"), "untouched");
    EXPECT_EQ(statusOf(folder.file("victim")).st_nlink, 1U);
}

TEST(SafeFile, LeavesAllAsItIsWhenTheBackupsNameIsTaken)
{
    const TemporaryFolder folder;
    folder.write("file", "old");
    std::filesystem::create_directory(folder.file("file.bak"));

    EXPECT_EQ(
        SafeFile::replace(folder.file("file"), "new", Backup::keep),
        "renaming the file: Is a directory");

    EXPECT_EQ(folder.read("file"), "old");
    EXPECT_THAT(namesIn(folder), ElementsAre("file", "file.bak"));
}

TEST(SafeFile, TellsTheStepAndTheReasonOfAFailure)
{
    const TemporaryFolder folder;
    folder.write("file", "");

    EXPECT_EQ(
        SafeFile::replace(folder.file("missing/file"), "", Backup::none),
        "opening the folder: No such file or directory");
    EXPECT_EQ(
        SafeFile::replace(folder.file("file/file"), "", Backup::none),
        "opening the file: Not a directory");
    EXPECT_EQ(
        SafeFile::replace(folder.path() + "/", "", Backup::none),
        "renaming the file: No such file or directory");
    EXPECT_THAT(namesIn(folder), ElementsAre("file"));
}

namespace {

/// What stands in the place of a file; each would be followed, changed or waited for by a plain
/// opening.
struct OtherKind {
    std::string name;
    std::function<void(const TemporaryFolder& folder, const std::string& path)> make;

    friend void PrintTo(const OtherKind& row, std::ostream* out) { *out << row.name; }
};

class NoRegularFile : public testing::TestWithParam<OtherKind> {};

} // namespace

TEST_P(NoRegularFile, CanNeitherBeReadNorReplaced)
{
    const TemporaryFolder folder;
    GetParam().make(folder, folder.file("entry"));
    const struct stat before = statusOf(folder.file("entry"));
    const std::vector<std::string> names = namesIn(folder);

    std::string content = "untouched";
    EXPECT_EQ(SafeFile::read(folder.file("entry")), std::nullopt);
    EXPECT_EQ(
        SafeFile::readForChange(folder.file("entry"), content),
        "opening the file: Not a regular file");
    EXPECT_EQ(content, "untouched");
    EXPECT_EQ(
        SafeFile::replace(folder.file("entry"), "new", Backup::keep),
        "opening the file: Not a regular file");

    EXPECT_EQ(statusOf(folder.file("entry")).st_ino, before.st_ino);
    EXPECT_THAT(namesIn(folder), testing::ElementsAreArray(names));
    EXPECT_NE(folder.read("target"), "new");
}

INSTANTIATE_TEST_SUITE_P(
    Kinds, NoRegularFile,
    testing::Values(
        OtherKind{
            "Folder",
            [](const auto&, const auto& path) { std::filesystem::create_directory(path); }},
        OtherKind{"Fifo", [](const auto&, const auto& path) { mkfifo(path.c_str(), 0600); }},
        OtherKind{"Socket", [](const auto&, const auto& path) { makeSocket(path); }},
        OtherKind{
            "LinkToAFile",
            [](const auto& folder, const auto& path) {
                folder.write("target", "untouched");
                EXPECT_EQ(symlink("target", path.c_str()), 0);
            }},
        OtherKind{
            "DanglingLink",
            [](const auto&, const auto& path) { EXPECT_EQ(symlink("target", path.c_str()), 0); }},
        OtherKind{
            "LinkToADevice",
            [](const auto&, const auto& path) {
                EXPECT_EQ(symlink("/dev/null", path.c_str()), 0);
            }}),
    [](const auto& row) { return row.param.name; });

// As a user who could not put a file in the device's place, whatever goes wrong here.
TEST(SafeFile, OpensNoDevice)
{
    EXPECT_EQ(SafeFile::read("/dev/null"), std::nullopt);
    EXPECT_TRUE(asOrdinaryUser([] {
        return SafeFile::replace("/dev/null", "new", Backup::keep) ==
               "opening the file: Not a regular file";
    }));
}

// Kept open for reading, a FIFO would take a writer.
TEST(SafeFile, OpensNoFifoThatSomebodyReads)
{
    const TemporaryFolder folder;
    ASSERT_EQ(mkfifo(folder.file("pipe").c_str(), 0600), 0);
    const int reader = open(folder.file("pipe").c_str(), O_RDONLY | O_NONBLOCK);
    ASSERT_GE(reader, 0);

    EXPECT_NE(SafeFile::replace(folder.file("pipe"), "new", Backup::none), "");

    char byte = 0;
    EXPECT_EQ(read(reader, &byte, 1), 0);
    close(reader);
}

TEST(SafeFile, ShowsReadersTheOldBytesOrTheNewNeverAMix)
{
    const TemporaryFolder folder;
    const std::string path = folder.file("file");
    const std::array<std::string, 2> contents{std::string(100000, 'a'), std::string(30000, 'b')};
    folder.write("file", contents[0]);

    std::atomic<bool> ended = false;
    std::array<std::thread, 2> writers;
    for (std::size_t i = 0; i < 2; ++i) {
        writers[i] = std::thread([&, i] {
            for (int round = 0; round < 10; ++round)
                EXPECT_EQ(SafeFile::replace(path, contents[i], Backup::keep), "");
        });
    }
    std::thread reader([&] {
        while (!ended) {
            const auto content = SafeFile::read(path);
            EXPECT_TRUE(content == contents[0] || content == contents[1]);
        }
    });
    for (std::thread& writer : writers)
        writer.join();
    ended = true;
    reader.join();

    EXPECT_THAT(namesIn(folder), ElementsAre("file", "file.bak"));
}

TEST(SafeFile, KeepsTheOldContentWhenTheNewDoesNotFit)
{
    const TemporaryFolder folder;
    folder.write("file", "old");
    folder.write("file.bak", "older");

    EXPECT_TRUE(onFullDisk(1000, [&] {
        return SafeFile::replace(folder.file("file"), std::string(1001, 'x'), Backup::keep) ==
               "writing the file: File too large";
    }));

    EXPECT_EQ(folder.read("file"), "old");
    EXPECT_EQ(folder.read("file.bak"), "older");
    EXPECT_THAT(namesIn(folder), ElementsAre("file", "file.bak"));
}
