#include "SafeFile.h"

#include "TemporaryFolder.h"

#include <algorithm>
#include <string>
#include <vector>

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

std::vector<std::string> namesIn(const TemporaryFolder& folder)
{
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder.path()))
        names.push_back(entry.path().filename());
    std::sort(names.begin(), names.end());
    return names;
}

/// The process's file mode mask for one test.
class FileModeMask {
public:
    explicit FileModeMask(mode_t mask) : m_former(umask(mask)) {}
    ~FileModeMask() { umask(m_former); }

    FileModeMask(const FileModeMask&) = delete;
    FileModeMask& operator=(const FileModeMask&) = delete;

private:
    mode_t m_former;
};

} // namespace

TEST(SafeFile, ReadsTheWholeContent)
{
    const TemporaryFolder folder;
    const std::string content = std::string(200000, 'x') + std::string("\0\r\n\xff", 4);
    folder.write("file", content);

    EXPECT_EQ(SafeFile::read(folder.file("file")), content);
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
    EXPECT_EQ(SafeFile::read(""), std::nullopt);
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

    for (const mode_t mask : {mode_t(0), mode_t(077)}) {
        const FileModeMask masked(mask);
        std::filesystem::remove(folder.file("file"));

        EXPECT_EQ(SafeFile::replace(folder.file("file"), "content", Backup::none), "");

        EXPECT_EQ(folder.read("file"), "content");
        EXPECT_EQ(modeOf(folder.file("file")), 0644U);
        EXPECT_THAT(namesIn(folder), ElementsAre("file"));
    }
}

TEST(SafeFile, KeepsTheModeOfTheReplacedFile)
{
    const TemporaryFolder folder;
    folder.write("file", "old");
    ASSERT_EQ(chmod(folder.file("file").c_str(), 0640), 0);

    EXPECT_EQ(SafeFile::replace(folder.file("file"), "new", Backup::keep), "");

    EXPECT_EQ(folder.read("file"), "new");
    EXPECT_EQ(modeOf(folder.file("file")), 0640U);
    EXPECT_EQ(modeOf(folder.file("file.bak")), 0640U);
}
