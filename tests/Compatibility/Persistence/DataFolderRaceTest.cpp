#include "DataFolder.h"
#include "ParameterFile.h"
#include "PrivateDataFolders.h"

#include <cerrno>
#include <filesystem>
#include <string>
#include <string_view>

#include <gtest/gtest.h>
#include <sys/stat.h>

namespace {

/// What another process makes right before this one can.
std::string_view madeMeanwhile;

} // namespace

// The linker leads every call of mkdir() here.
extern "C" {

int realMkdir(const char* path, mode_t mode) __asm__("__real_mkdir");
int mkdirCalled(const char* path, mode_t mode) __asm__("__wrap_mkdir");

int mkdirCalled(const char* path, mode_t mode)
{
    if (!madeMeanwhile.empty() && std::string_view(path).ends_with(madeMeanwhile))
        realMkdir(path, mode);
    return realMkdir(path, mode);
}

} // extern "C"

class DataFolderRace : public testing::TestWithParam<const char*> {
protected:
    ~DataFolderRace() override { madeMeanwhile = {}; }
};

TEST_P(DataFolderRace, LeavesTheFolderOfTheScopeMade)
{
    const PrivateDataFolders folders;
    madeMeanwhile = GetParam();

    DataFolder::create("scope", PERSISTENCE_ALL_USERS);

    EXPECT_TRUE(std::filesystem::is_directory(folders.allUsers().file("Pelora/scope")));
}

TEST_P(DataFolderRace, LeavesAllThatIsMissingMade)
{
    const PrivateDataFolders folders;
    const std::string folder = folders.allUsers().file("Pelora/scope");
    madeMeanwhile = GetParam();

    DataFolder::makeMissing(folder, PERSISTENCE_ALL_USERS);

    EXPECT_TRUE(std::filesystem::is_directory(folder));
}

TEST_P(DataFolderRace, LetsAFileBeWrittenIntoFoldersThatAreGone)
{
    const PrivateDataFolders folders;
    const std::string file = folders.user().file("Pelora/scope/file");
    madeMeanwhile = GetParam();

    EXPECT_TRUE(ParameterFile::replace(file, PERSISTENCE_CURRENT_USER, "x"));

    EXPECT_EQ(folders.user().read("Pelora/scope/file"), "x");
}

INSTANTIATE_TEST_SUITE_P(MadeMeanwhile, DataFolderRace, testing::Values("/Pelora", "/scope"));
