#include "DataFolder.h"
#include "ParameterFile.h"
#include "PrivateDataFolders.h"

#include <algorithm>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>
#include <sys/stat.h>

namespace {

using Names = std::vector<std::string_view>;

/// What another process makes right before this one can.
Names madeMeanwhile;

bool isMadeMeanwhile(std::string_view path)
{
    return std::ranges::any_of(
        madeMeanwhile, [path](std::string_view name) { return path.ends_with(name); });
}

} // namespace

// The linker leads every call of mkdir() here.
extern "C" {

int realMkdir(const char* path, mode_t mode) __asm__("__real_mkdir");
int mkdirCalled(const char* path, mode_t mode) __asm__("__wrap_mkdir");

int mkdirCalled(const char* path, mode_t mode)
{
    if (isMadeMeanwhile(path))
        realMkdir(path, mode);
    return realMkdir(path, mode);
}

} // extern "C"

class DataFolderRace : public testing::TestWithParam<Names> {
protected:
    ~DataFolderRace() override { madeMeanwhile.clear(); }
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

INSTANTIATE_TEST_SUITE_P(
    MadeMeanwhile, DataFolderRace,
    testing::Values(Names{"/Pelora"}, Names{"/scope"}, Names{"/Pelora", "/scope"}),
    [](const auto& row) { return "Row" + std::to_string(row.index); });
