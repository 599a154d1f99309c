#include "AppDataManager.h"

#include "FileSystemManagement.h"
#include "FolderNames.h"
#include "PrivateDataFolders.h"

#include <filesystem>
#include <fstream>
#include <iostream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace {

class AppDataManagerTest : public testing::Test {
protected:
    AppDataManagerTest() { manager.setGlobalScope("scope"); }

    /// Makes a folder and writes one file into it.
    static void put(const std::string& folder, const std::string& name)
    {
        fs::create_directories(folder);
        std::ofstream(folder + name) << "x";
    }

    PrivateDataFolders folders;
    const std::string user = folders.user().path();
    const std::string allUsers = folders.allUsers().path();
    AppDataManager& manager = *AppDataManager::getInstance();
};

/// A folder beside the running test, removed at the end of the scope.
class FolderBesideExecutable {
public:
    explicit FolderBesideExecutable(const std::string& name)
        : m_path(FileSystemManagement::getCurrentExecutableDirectory() + name + "/")
    {
        fs::create_directories(m_path);
    }
    ~FolderBesideExecutable()
    {
        std::error_code ignored;
        fs::remove_all(m_path, ignored);
    }
    FolderBesideExecutable(const FolderBesideExecutable&) = delete;
    FolderBesideExecutable& operator=(const FolderBesideExecutable&) = delete;

    const std::string& path() const { return m_path; }

private:
    std::string m_path;
};

} // namespace

TEST(FolderNames, AreTheMakersAndTheDownloads)
{
    EXPECT_STREQ(FOLDERNAME_PELORA, "Pelora");
    EXPECT_STREQ(FOLDERNAME_VANTEO, "Vanteo");
    EXPECT_STREQ(FOLDERNAME_DOWNLOADS, "Downloads");
}

TEST_F(AppDataManagerTest, IsOneObject)
{
    EXPECT_EQ(AppDataManager::getInstance(), &manager);
}

// In a process of its own, since there no test has set the scope yet.
TEST(AppDataManagerDeathTest, HasAnEmptyScopeUntilOneIsSet)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    const ScopedEnvironment variable("TAV_COMMON_DATA_DIR", "/base");

    EXPECT_EXIT(
        {
            std::cerr << AppDataManager::getInstance()->getAllUsersDataPath();
            std::exit(0);
        },
        testing::ExitedWithCode(0), testing::StrEq("/base/Pelora//"));
}

TEST_F(AppDataManagerTest, DataPathsAreBaseMakerAndScopeWithoutSeparatorAtTheEnd)
{
    std::string userPath;
    std::string allUsersPath;

    manager.getDataPath(userPath, allUsersPath, "Downloads");

    EXPECT_EQ(userPath, user + "/Pelora/Downloads");
    EXPECT_EQ(allUsersPath, allUsers + "/Pelora/Downloads");
}

TEST_F(AppDataManagerTest, DataPathsOfTheEmptyScopeEndBehindTheMaker)
{
    std::string userPath;
    std::string allUsersPath;

    manager.getDataPath(userPath, allUsersPath, "");

    EXPECT_EQ(userPath, user + "/Pelora/");
    EXPECT_EQ(allUsersPath, allUsers + "/Pelora/");
}

TEST_F(AppDataManagerTest, AllUsersDataPathIsOfTheGlobalScopeWithSeparatorAtTheEnd)
{
    EXPECT_EQ(manager.getAllUsersDataPath(), allUsers + "/Pelora/scope/");
}

TEST_F(AppDataManagerTest, LaterScopeRulesLaterPaths)
{
    manager.setGlobalScope("other");

    EXPECT_EQ(manager.getAllUsersDataPath(), allUsers + "/Pelora/other/");
    EXPECT_EQ(manager.getPathForFile("domain", "file"), user + "/Pelora/other/domain/");
}

TEST_F(AppDataManagerTest, EmptyGlobalScopeLeavesItsSeparatorsInThePath)
{
    manager.setGlobalScope("");

    EXPECT_EQ(manager.getAllUsersDataPath(), allUsers + "/Pelora//");
}

TEST_F(AppDataManagerTest, EmptyGlobalScopeHasItsDomainsInTheMakersFolder)
{
    manager.setGlobalScope("");
    EXPECT_EQ(manager.getPathForFile("domain", "file"), user + "/Pelora//domain/");

    put(allUsers + "/Pelora/domain/", "file");
    EXPECT_EQ(manager.getPathForFile("domain", "file"), allUsers + "/Pelora//domain/");
}

TEST_F(AppDataManagerTest, EmptyDomainIsTheFolderOfTheScope)
{
    EXPECT_EQ(manager.getPathForFile("", "file"), user + "/Pelora/scope//");

    put(allUsers + "/Pelora/scope/", "file");
    EXPECT_EQ(manager.getPathForFile("", "file"), allUsers + "/Pelora/scope//");

    put(user + "/Pelora/scope/", "file");
    EXPECT_EQ(manager.getPathForFile("", "file"), user + "/Pelora/scope//");
}

TEST_F(AppDataManagerTest, EmptyDomainBesideTheExecutableIsTheFolderOfTheExecutable)
{
    const std::string self = FileSystemManagement::getCurrentExecutableName();

    EXPECT_EQ(
        manager.getPathForFile("", self),
        FileSystemManagement::getCurrentExecutableDirectory() + "/");
}

TEST_F(AppDataManagerTest, AskingForPathsMakesNoFolder)
{
    manager.getAllUsersDataPath();
    manager.getPathForFile("domain", "file");

    EXPECT_TRUE(fs::is_empty(user));
    EXPECT_TRUE(fs::is_empty(allUsers));
}

TEST_F(AppDataManagerTest, FileOfBothFoldersIsFoundInTheUserFolder)
{
    put(user + "/Pelora/scope/domain/", "file");
    put(allUsers + "/Pelora/scope/domain/", "file");

    EXPECT_EQ(manager.getPathForFile("domain", "file"), user + "/Pelora/scope/domain/");
}

TEST_F(AppDataManagerTest, FolderOfTheFilesNameCountsAsTheFile)
{
    fs::create_directories(allUsers + "/Pelora/scope/domain/file");

    EXPECT_EQ(manager.getPathForFile("domain", "file"), allUsers + "/Pelora/scope/domain/");
}

TEST_F(AppDataManagerTest, FileOfTheAllUsersFolderAloneIsFoundThere)
{
    put(user + "/Pelora/scope/domain/", "another");
    put(allUsers + "/Pelora/scope/domain/", "file");

    EXPECT_EQ(manager.getPathForFile("domain", "file"), allUsers + "/Pelora/scope/domain/");
}

TEST_F(AppDataManagerTest, FileBesideTheExecutableIsFoundLast)
{
    ASSERT_EQ(access(FileSystemManagement::getCurrentExecutableDirectory().c_str(), W_OK), 0)
        << "the test needs to write beside its executable";
    const FolderBesideExecutable folder("AppDataManagerTest.domain");
    put(folder.path(), "file");

    EXPECT_EQ(manager.getPathForFile("AppDataManagerTest.domain", "file"), folder.path());

    put(allUsers + "/Pelora/scope/AppDataManagerTest.domain/", "file");
    EXPECT_EQ(
        manager.getPathForFile("AppDataManagerTest.domain", "file"),
        allUsers + "/Pelora/scope/AppDataManagerTest.domain/");
}

TEST_F(AppDataManagerTest, FileFoundNowhereBelongsInTheUserFolder)
{
    EXPECT_EQ(manager.getPathForFile("domain", "file"), user + "/Pelora/scope/domain/");
    EXPECT_FALSE(fs::exists(user + "/Pelora"));
}
