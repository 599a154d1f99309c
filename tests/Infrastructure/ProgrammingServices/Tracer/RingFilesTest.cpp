#include "RingFiles.h"

#include "FileModeMask.h"
#include "ScopedTimeZone.h"
#include "SystemCallFaults.h"
#include "TemporaryFolder.h"

#include <cerrno>
#include <cstddef>
#include <cstdio>
#include <ctime>
#include <deque>
#include <filesystem>
#include <iterator>
#include <string>
#include <utility>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

/// Whom the process is told to run as at each request, as if files were another user's: only root
/// can give one away.
std::deque<uid_t> askedUsers;

} // namespace

extern "C" {
// NOLINTBEGIN(bugprone-reserved-identifier): the names that the linker's --wrap gives
uid_t __real_geteuid();

uid_t __wrap_geteuid()
{
    if (askedUsers.empty())
        return __real_geteuid();
    const uid_t user = askedUsers.front();
    askedUsers.pop_front();
    return user;
}
// NOLINTEND(bugprone-reserved-identifier)
}

namespace {

constexpr std::time_t c_day = 86400;
constexpr std::time_t c_hour = 3600;
constexpr std::time_t c_minute = 60;

/// A ring whose files have chosen times of modification, in UTC.
class RingFilesSearch : public testing::Test {
protected:
    void addFile(long index, std::time_t modified) const
    {
        const std::string path = m_folder.write(name(index), "");
        setTime(path, modified);
    }

    static void setTime(const std::string& path, std::time_t modified, int flags = 0)
    {
        const std::timespec times[2] = {{modified, 0}, {modified, 0}};
        ASSERT_EQ(utimensat(AT_FDCWD, path.c_str(), times, flags), 0);
    }

    long findLastUsed(long maxFiles) const
    {
        return RingFiles::findLastUsed(m_folder.file("app"), maxFiles);
    }

    static std::string name(long index) { return "app_" + std::to_string(index) + ".txt"; }

    ScopedTimeZone m_zone{"UTC0"};
    TemporaryFolder m_folder;
};

class RingFilesOpen : public testing::TestWithParam<RingFiles::Mode> {
protected:
    ~RingFilesOpen() override { askedUsers.clear(); }

    TemporaryFolder m_folder;
};

mode_t modeOf(const std::string& path)
{
    struct stat status {};
    return stat(path.c_str(), &status) == 0 ? status.st_mode & 07777 : 0;
}

std::ptrdiff_t openDescriptors()
{
    const std::filesystem::directory_iterator descriptors("/proc/self/fd");
    return std::distance(begin(descriptors), end(descriptors));
}

void writeThrough(RingFiles::File file, const char* text)
{
    ASSERT_NE(file, nullptr);
    std::fputs(text, file.get());
}

} // namespace

TEST(RingFiles, NameIsBaseAndIndex)
{
    EXPECT_EQ(RingFiles::name("/x/app", 3), "/x/app_3.txt");
    EXPECT_EQ(RingFiles::name("/x/app", 0), "/x/app_0.txt");
}

TEST_F(RingFilesSearch, FindsNoneWithoutTheFirstFile)
{
    addFile(1, 100);

    EXPECT_EQ(findLastUsed(10), -1);
}

TEST_F(RingFilesSearch, FindsTheOnlyFile)
{
    addFile(0, 100);

    EXPECT_EQ(findLastUsed(10), 0);
}

TEST_F(RingFilesSearch, StopsAtTheFirstMissingFile)
{
    addFile(0, 100);
    addFile(1, 200);
    addFile(3, 300);

    EXPECT_EQ(findLastUsed(10), 1);
}

TEST_F(RingFilesSearch, FindsTheEndOfTheRunWrittenInOrder)
{
    addFile(0, 5 * c_day + 100);
    addFile(1, 5 * c_day + 200);
    addFile(2, 4 * c_day + 300);
    addFile(3, 4 * c_day + 400);

    EXPECT_EQ(findLastUsed(4), 1);
}

TEST_F(RingFilesSearch, TakesFilesOfTheSameSecondAsInOrder)
{
    addFile(0, 100);
    addFile(1, 100);
    addFile(2, 99);

    EXPECT_EQ(findLastUsed(10), 1);
}

TEST_F(RingFilesSearch, TakesALaterDayAtAnEarlierHourAsOlder)
{
    addFile(0, 5 * c_day + 10 * c_hour);
    addFile(1, 6 * c_day + 9 * c_hour);
    addFile(2, 6 * c_day + 11 * c_hour);

    EXPECT_EQ(findLastUsed(10), 0);
}

TEST_F(RingFilesSearch, TakesAnEarlierDayAtALaterHourAsOlder)
{
    addFile(0, 6 * c_day + 9 * c_hour);
    addFile(1, 5 * c_day + 10 * c_hour);

    EXPECT_EQ(findLastUsed(10), 0);
}

TEST_F(RingFilesSearch, ComparesEachFileWithTheOneBefore)
{
    addFile(0, 10 * c_hour);
    addFile(1, 12 * c_hour);
    addFile(2, 11 * c_hour);

    EXPECT_EQ(findLastUsed(10), 1);
}

TEST_F(RingFilesSearch, TakesTheYearAsTheHighestDigits)
{
    addFile(0, 20 * c_day);  // 21 January 1970
    addFile(1, 365 * c_day); // 1 January 1971

    EXPECT_EQ(findLastUsed(10), 1);
}

TEST_F(RingFilesSearch, TakesTheMonthAsHigherDigitsThanTheDay)
{
    addFile(0, 30 * c_day); // 31 January
    addFile(1, 31 * c_day); // 1 February

    EXPECT_EQ(findLastUsed(10), 1);
}

TEST_F(RingFilesSearch, TakesTheHourAsHigherDigitsThanTheMinute)
{
    addFile(0, 9 * c_hour + 59 * c_minute);
    addFile(1, 10 * c_hour);

    EXPECT_EQ(findLastUsed(10), 1);
}

TEST_F(RingFilesSearch, TakesTheMinuteAsHigherDigitsThanTheSecond)
{
    addFile(0, 10 * c_minute + 59);
    addFile(1, 11 * c_minute);

    EXPECT_EQ(findLastUsed(10), 1);
}

TEST_F(RingFilesSearch, TakesAFolderInTheRunAsOneOfItsFiles)
{
    addFile(0, 100);
    ASSERT_EQ(mkdir(m_folder.file(name(1)).c_str(), 0700), 0);
    setTime(m_folder.file(name(1)), 200);
    addFile(2, 300);

    EXPECT_EQ(findLastUsed(10), 2);
}

TEST_F(RingFilesSearch, TakesTheTimeOfWhatALinkLeadsTo)
{
    addFile(0, 100);
    addFile(5, 200);
    ASSERT_EQ(symlink(name(5).c_str(), m_folder.file(name(1)).c_str()), 0);
    setTime(m_folder.file(name(1)), 400, AT_SYMLINK_NOFOLLOW);
    addFile(2, 300);

    EXPECT_EQ(findLastUsed(10), 2);
}

TEST_F(RingFilesSearch, LooksAtTheFileBehindTheRingToo)
{
    addFile(0, 100);
    addFile(1, 200);
    addFile(2, 300);
    addFile(3, 400);

    EXPECT_EQ(findLastUsed(2), 2);
}

TEST_F(RingFilesSearch, ComparesDatesInLocalTime)
{
    addFile(0, 5 * c_day + 22 * c_hour);
    addFile(1, 6 * c_day + 1 * c_hour);
    ASSERT_EQ(findLastUsed(10), 0);

    const ScopedTimeZone west("TST+5");

    EXPECT_EQ(findLastUsed(10), 1);
}

TEST_P(RingFilesOpen, CreatesAFileThatOthersCannotWriteThoughTheMaskLetsThem)
{
    const FileModeMask mask(0);

    const RingFiles::File file = RingFiles::open(m_folder.file("app_0.txt"), GetParam());

    ASSERT_NE(file, nullptr);
    EXPECT_EQ(modeOf(m_folder.file("app_0.txt")), 0644U);
}

TEST_P(RingFilesOpen, CreatesAFileForItsOwnerAloneWhenTheMaskSaysSo)
{
    const FileModeMask mask(077);

    const RingFiles::File file = RingFiles::open(m_folder.file("app_0.txt"), GetParam());

    ASSERT_NE(file, nullptr);
    EXPECT_EQ(modeOf(m_folder.file("app_0.txt")), 0600U);
}

TEST_P(RingFilesOpen, IsClosedInAProgramStartedFromThisOne)
{
    const RingFiles::File file = RingFiles::open(m_folder.file("app_0.txt"), GetParam());

    ASSERT_NE(file, nullptr);
    EXPECT_NE(fcntl(fileno(file.get()), F_GETFD) & FD_CLOEXEC, 0);
}

TEST_P(RingFilesOpen, FollowsNoSymbolicLink)
{
    const std::string target = m_folder.write("target", "kept");
    ASSERT_EQ(symlink(target.c_str(), m_folder.file("app_0.txt").c_str()), 0);

    EXPECT_EQ(RingFiles::open(m_folder.file("app_0.txt"), GetParam()), nullptr);
    EXPECT_EQ(m_folder.read("target"), "kept");
}

TEST_P(RingFilesOpen, OpensItsUsersFileByTheSecondNameOfABackup)
{
    const std::string backup = m_folder.write("backup", "");
    ASSERT_EQ(link(backup.c_str(), m_folder.file("app_0.txt").c_str()), 0);

    writeThrough(RingFiles::open(m_folder.file("app_0.txt"), GetParam()), "new\n");

    EXPECT_EQ(m_folder.read("backup"), "new\n");
}

TEST_P(RingFilesOpen, RefusesAFileOfTwoNamesWhereOthersMayMakeThem)
{
    for (const mode_t mode : {0770U, 0707U}) {
        const TemporaryFolder open;
        const std::string other = open.write("other", "kept");
        ASSERT_EQ(link(other.c_str(), open.file("app_0.txt").c_str()), 0);
        ASSERT_EQ(chmod(open.path().c_str(), mode), 0);

        EXPECT_EQ(RingFiles::open(open.file("app_0.txt"), GetParam()), nullptr) << mode;
        EXPECT_EQ(open.read("other"), "kept");
    }
}

TEST_P(RingFilesOpen, RefusesAFileOfTwoNamesThatIsAnotherUsers)
{
    const std::string other = m_folder.write("other", "kept");
    ASSERT_EQ(link(other.c_str(), m_folder.file("app_0.txt").c_str()), 0);
    askedUsers = {geteuid() + 1, geteuid()};

    EXPECT_EQ(RingFiles::open(m_folder.file("app_0.txt"), GetParam()), nullptr);
    EXPECT_EQ(m_folder.read("other"), "kept");
}

TEST_P(RingFilesOpen, RefusesAFileOfTwoNamesInAnotherUsersFolder)
{
    const std::string other = m_folder.write("other", "kept");
    ASSERT_EQ(link(other.c_str(), m_folder.file("app_0.txt").c_str()), 0);
    askedUsers = {geteuid(), geteuid() + 1};

    EXPECT_EQ(RingFiles::open(m_folder.file("app_0.txt"), GetParam()), nullptr);
    EXPECT_EQ(m_folder.read("other"), "kept");
}

TEST_P(RingFilesOpen, RefusesAFileOfTwoNamesThatAnotherFileReplacesMeanwhile)
{
    const std::string path = m_folder.write("app_0.txt", "kept");
    ASSERT_EQ(link(path.c_str(), m_folder.file("other").c_str()), 0);
    SystemCallFaults faults;
    faults.interrupt("fstatat", "app_0.txt", [this, &path] {
        std::filesystem::remove(path);
        m_folder.write("app_0.txt", "kept too");
    });

    EXPECT_EQ(RingFiles::open(path, GetParam()), nullptr);
    EXPECT_EQ(m_folder.read("other"), "kept");
    EXPECT_EQ(m_folder.read("app_0.txt"), "kept too");
}

TEST_P(RingFilesOpen, RefusesAFileOfTwoNamesWhoseNameIsMeanwhileOneOfAnotherDevice)
{
    const std::string path = m_folder.write("app_0.txt", "kept");
    ASSERT_EQ(link(path.c_str(), m_folder.file("other").c_str()), 0);
    struct stat status {};
    ASSERT_EQ(stat(path.c_str(), &status), 0);
    SystemCallFaults faults;
    faults.claimDevice("app_0.txt", status.st_dev + 1);

    EXPECT_EQ(RingFiles::open(path, GetParam()), nullptr);
    EXPECT_EQ(m_folder.read("other"), "kept");
}

TEST_P(RingFilesOpen, OpensAFileOfTwoNamesInTheCurrentFolder)
{
    const std::string backup = m_folder.write("backup", "");
    ASSERT_EQ(link(backup.c_str(), m_folder.file("app_0.txt").c_str()), 0);
    const std::filesystem::path former = std::filesystem::current_path();
    std::filesystem::current_path(m_folder.path());

    writeThrough(RingFiles::open("app_0.txt", GetParam()), "new\n");

    std::filesystem::current_path(former);
    EXPECT_EQ(m_folder.read("backup"), "new\n");
}

TEST_P(RingFilesOpen, CannotOpenAFifoAndDoesNotWaitForItsReader)
{
    ASSERT_EQ(mkfifo(m_folder.file("app_0.txt").c_str(), 0600), 0);

    EXPECT_EQ(RingFiles::open(m_folder.file("app_0.txt"), GetParam()), nullptr);
}

TEST_P(RingFilesOpen, CannotOpenAFifoThatHasAReader)
{
    ASSERT_EQ(mkfifo(m_folder.file("app_0.txt").c_str(), 0600), 0);
    const int reader = open(m_folder.file("app_0.txt").c_str(), O_RDONLY | O_NONBLOCK);

    EXPECT_EQ(RingFiles::open(m_folder.file("app_0.txt"), GetParam()), nullptr);
    close(reader);
}

TEST_P(RingFilesOpen, CannotOpenAFolder)
{
    ASSERT_EQ(mkdir(m_folder.file("app_0.txt").c_str(), 0700), 0);

    EXPECT_EQ(RingFiles::open(m_folder.file("app_0.txt"), GetParam()), nullptr);
}

TEST_P(RingFilesOpen, LeavesNoDescriptorOpenWhenThereIsNoMemoryForAStream)
{
    const std::ptrdiff_t before = openDescriptors();
    SystemCallFaults faults;
    faults.fail("fdopen", ENOMEM);

    EXPECT_EQ(RingFiles::open(m_folder.file("app_0.txt"), GetParam()), nullptr);
    EXPECT_EQ(openDescriptors(), before);
}

TEST_P(RingFilesOpen, CannotOpenInAMissingFolder)
{
    EXPECT_EQ(RingFiles::open(m_folder.file("missing/app_0.txt"), GetParam()), nullptr);
}

INSTANTIATE_TEST_SUITE_P(
    Modes, RingFilesOpen, testing::Values(RingFiles::Mode::append, RingFiles::Mode::empty));

TEST(RingFiles, AppendKeepsWhatTheFileHolds)
{
    const TemporaryFolder folder;
    folder.write("app_0.txt", "old\n");

    writeThrough(RingFiles::open(folder.file("app_0.txt"), RingFiles::Mode::append), "new\n");

    EXPECT_EQ(folder.read("app_0.txt"), "old\nnew\n");
}

TEST(RingFiles, EmptyDropsWhatTheFileHolds)
{
    const TemporaryFolder folder;
    folder.write("app_0.txt", "much older\n");

    writeThrough(RingFiles::open(folder.file("app_0.txt"), RingFiles::Mode::empty), "new\n");

    EXPECT_EQ(folder.read("app_0.txt"), "new\n");
}

TEST(RingFiles, CannotOpenAFileThatCannotBeEmptied)
{
    const TemporaryFolder folder;
    folder.write("app_0.txt", "kept\n");
    SystemCallFaults faults;
    faults.fail("ftruncate", EIO);

    EXPECT_EQ(RingFiles::open(folder.file("app_0.txt"), RingFiles::Mode::empty), nullptr);
    EXPECT_EQ(folder.read("app_0.txt"), "kept\n");
}

TEST(RingFiles, LeavesTheModeOfAnExistingFile)
{
    const TemporaryFolder folder;
    folder.write("app_0.txt", "");
    ASSERT_EQ(chmod(folder.file("app_0.txt").c_str(), 0600), 0);

    writeThrough(RingFiles::open(folder.file("app_0.txt"), RingFiles::Mode::append), "new\n");

    EXPECT_EQ(modeOf(folder.file("app_0.txt")), 0600U);
}

TEST(RingFiles, CountsTheLinesThatGetlineReads)
{
    const TemporaryFolder folder;

    EXPECT_EQ(RingFiles::countLines(folder.write("empty", "")), 0);
    EXPECT_EQ(RingFiles::countLines(folder.write("ended", "a\n\nb\n")), 3);
    EXPECT_EQ(RingFiles::countLines(folder.write("open", "a\nb")), 2);
    EXPECT_EQ(RingFiles::countLines(folder.write("blank", "\n")), 1);
    const std::string many(200001, '\n');
    EXPECT_EQ(RingFiles::countLines(folder.write("many", many)), 200001);
    EXPECT_EQ(RingFiles::countLines(folder.write("long", std::string(65536, 'a'))), 1);
    EXPECT_EQ(RingFiles::countLines(folder.write("edge", std::string(65535, 'a') + "\nb")), 2);
}

TEST(RingFiles, CountsNoLinesOfWhatCannotBeRead)
{
    const TemporaryFolder folder;
    ASSERT_EQ(mkfifo(folder.file("fifo").c_str(), 0600), 0);
    folder.write("target", "a\n");
    ASSERT_EQ(symlink(folder.file("target").c_str(), folder.file("link").c_str()), 0);

    EXPECT_EQ(RingFiles::countLines(folder.file("missing")), 0);
    EXPECT_EQ(RingFiles::countLines(folder.file("fifo")), 0);
    EXPECT_EQ(RingFiles::countLines(folder.file("link")), 0);
    EXPECT_EQ(RingFiles::countLines(folder.path()), 0);
}
