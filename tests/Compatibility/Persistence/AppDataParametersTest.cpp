#include "AppDataManager.h"
#include "OwnedBytes.h"
#include "PrivateDataFolders.h"

#include <filesystem>

#include <gtest/gtest.h>

namespace fs = std::filesystem;
using namespace std::string_literals;

namespace {

using Names = std::list<std::string>;

/// The manager lives as long as the process and keeps the stores of a domain for ever, so each test
/// has a domain of its own: the name of the test.
class AppDataParametersTest : public testing::Test {
protected:
    AppDataParametersTest() { manager.setGlobalScope("scope"); }

    std::string userFile(const std::string& suffix) const
    {
        return folders.user().read("Pelora/scope/" + domain + suffix);
    }
    std::string allUsersFile(const std::string& suffix) const
    {
        return folders.allUsers().read("Pelora/scope/" + domain + suffix);
    }
    std::string readBytes(const std::string& name) const
    {
        int size = 0;
        const OwnedBytes data(manager.readUnformattedParam(domain, name, size));
        return data == nullptr ? "none" : std::string(data.get(), static_cast<std::size_t>(size));
    }
    static void put(const TemporaryFolder& folder, const std::string& name)
    {
        fs::create_directories(fs::path(folder.file(name)).parent_path());
        folder.write(name, "x");
    }

    PrivateDataFolders folders;
    const std::string domain = testing::UnitTest::GetInstance()->current_test_info()->name();
    AppDataManager& manager = *AppDataManager::getInstance();
};

} // namespace

TEST_F(AppDataParametersTest, StoresOfADomainAreMadeOnceUserFirst)
{
    const auto& pair = manager.getPersistence(domain);
    pair.first->writeParam("a", "user");
    pair.second->writeParam("a", "all");

    EXPECT_EQ(&manager.getPersistence(domain), &pair);
    EXPECT_NE(&manager.getPersistence("another domain"), &pair);
    EXPECT_EQ(userFile(".dat"), "a=user\n");
    EXPECT_EQ(allUsersFile(".dat"), "a=all\n");
}

TEST_F(AppDataParametersTest, BinaryStoresOfADomainAreMadeOnceUserFirst)
{
    const auto& pair = manager.getBinaryPersistence(domain);
    pair.first->writeUnformattedParam("a", "U", 1);
    pair.second->writeUnformattedParam("a", "A", 1);

    EXPECT_EQ(&manager.getBinaryPersistence(domain), &pair);
    EXPECT_EQ(userFile("_binary.dat"), "\x02\0\0\0a\0\x01\0\0\0U"s);
    EXPECT_EQ(allUsersFile("_binary.dat"), "\x02\0\0\0a\0\x01\0\0\0A"s);
}

TEST_F(AppDataParametersTest, UsersValueHidesThatOfAllUsers)
{
    EXPECT_TRUE(manager.writeParam(domain, "a", "user"));
    EXPECT_TRUE(manager.writeParamForAllUsers(domain, "a", "all"));
    std::string value;

    EXPECT_TRUE(manager.readParam(domain, "a", value));

    EXPECT_EQ(value, "user");
}

TEST_F(AppDataParametersTest, ValueOfAllUsersIsTheFallback)
{
    manager.writeParam(domain, "other", "user");
    manager.writeParamForAllUsers(domain, "a", "all");
    std::string value;

    EXPECT_TRUE(manager.readParam(domain, "a", value));

    EXPECT_EQ(value, "all");
}

TEST_F(AppDataParametersTest, ValueThatNobodyHasIsNotFound)
{
    std::string value = "untouched";

    EXPECT_FALSE(manager.readParam(domain, "a", value));

    EXPECT_EQ(value, "untouched");
}

TEST_F(AppDataParametersTest, UsersBytesHideThoseOfAllUsersWhichAreTheFallback)
{
    EXPECT_TRUE(manager.writeUnformattedParam(domain, "a", "U", 1));
    EXPECT_TRUE(manager.writeUnformattedParamForAllUsers(domain, "a", "A", 1));
    EXPECT_TRUE(manager.writeUnformattedParamForAllUsers(domain, "b", "B", 1));

    EXPECT_EQ(readBytes("a"), "U");
    EXPECT_EQ(readBytes("b"), "B");
    EXPECT_EQ(readBytes("c"), "none");
}

TEST_F(AppDataParametersTest, UsersBytesOfSizeZeroAreNoMiss)
{
    manager.writeUnformattedParam(domain, "a", nullptr, 0);
    manager.writeUnformattedParamForAllUsers(domain, "a", "A", 1);

    EXPECT_EQ(readBytes("a"), "");
}

TEST_F(AppDataParametersTest, StoresKeepTheirFilesWhenTheScopeChanges)
{
    manager.writeParam(domain, "a", "1");

    manager.setGlobalScope("other");
    manager.writeParam(domain, "b", "2");
    manager.writeParam(domain + " of later", "c", "3");

    EXPECT_EQ(userFile(".dat"), "a=1\nb=2\n");
    EXPECT_EQ(folders.user().read("Pelora/other/" + domain + " of later.dat"), "c=3\n");
}

TEST_F(AppDataParametersTest, RemovingDomainDataEmptiesItsFourFiles)
{
    manager.writeParam(domain, "a", "1");
    manager.writeParamForAllUsers(domain, "a", "1");
    manager.writeUnformattedParam(domain, "a", "A", 1);
    manager.writeUnformattedParamForAllUsers(domain, "a", "A", 1);
    manager.writeParam(domain + " spared", "a", "1");

    manager.removeDomainData(domain);

    std::string value;
    EXPECT_FALSE(manager.readParam(domain, "a", value));
    EXPECT_EQ(readBytes("a"), "none");
    EXPECT_EQ(fs::file_size(folders.user().file("Pelora/scope/" + domain + ".dat")), 0U);
    EXPECT_EQ(fs::file_size(folders.allUsers().file("Pelora/scope/" + domain + ".dat")), 0U);
    EXPECT_EQ(fs::file_size(folders.allUsers().file("Pelora/scope/" + domain + "_binary.dat")), 0U);
    EXPECT_TRUE(manager.readParam(domain + " spared", "a", value));
}

TEST_F(AppDataParametersTest, AllUsersDataFolderIsMadeForItsOwnerToWrite)
{
    manager.createAllUsersDataFolder();

    EXPECT_EQ(fs::status(manager.getAllUsersDataPath()).permissions(), fs::perms{0755});
}

TEST_F(AppDataParametersTest, ListsFilesOfBothFoldersSortedAndOnce)
{
    put(folders.user(), "Pelora/scope/domain/b.txt");
    put(folders.user(), "Pelora/scope/domain/both.txt");
    put(folders.allUsers(), "Pelora/scope/domain/both.txt");
    put(folders.allUsers(), "Pelora/scope/domain/a.txt");
    put(folders.user(), "Pelora/scope/other/c.txt");

    EXPECT_EQ(manager.getFiles("domain"), (Names{"a.txt", "b.txt", "both.txt"}));
}

TEST_F(AppDataParametersTest, ListsFilesOfAllLevelsByTheirRelativePath)
{
    put(folders.user(), "Pelora/scope/domain/inner/deep.txt");
    put(folders.user(), "Pelora/scope/domain/.hidden");

    EXPECT_EQ(manager.getFiles("domain"), (Names{".hidden", "inner/deep.txt"}));
}

TEST_F(AppDataParametersTest, DoesNotListNamesWithoutAFullStop)
{
    put(folders.user(), "Pelora/scope/domain/plain");
    put(folders.user(), "Pelora/scope/domain/inner.d/plain");

    EXPECT_EQ(manager.getFiles("domain"), (Names{"inner.d", "inner.d/plain"}));
}

TEST_F(AppDataParametersTest, ListsNothingOfMissingFolders)
{
    EXPECT_EQ(manager.getFiles("domain"), Names());
}

TEST_F(AppDataParametersTest, RemovingAllDataLeavesNothingOfTheLastScope)
{
    put(folders.user(), "Pelora/scope/domain/a.txt");
    put(folders.allUsers(), "Pelora/scope/a.txt");
    put(folders.user(), "Pelora/Downloads/a.txt");
    put(folders.allUsers(), "Pelora/Downloads/inner/a.txt");

    manager.removeAllData("scope");

    EXPECT_TRUE(fs::is_empty(folders.user().path()));
    EXPECT_TRUE(fs::is_empty(folders.allUsers().path()));
}

TEST_F(AppDataParametersTest, RemovingAllDataSparesOtherScopesButNotTheDownloads)
{
    put(folders.user(), "Pelora/scope/a.txt");
    put(folders.user(), "Pelora/other/a.txt");
    put(folders.user(), "Pelora/Downloads/a.txt");
    put(folders.user(), "Another/a.txt");

    manager.removeAllData("scope");

    EXPECT_FALSE(fs::exists(folders.user().file("Pelora/scope")));
    EXPECT_FALSE(fs::exists(folders.user().file("Pelora/Downloads")));
    EXPECT_EQ(folders.user().read("Pelora/other/a.txt"), "x");
    EXPECT_EQ(folders.user().read("Another/a.txt"), "x");
}

TEST_F(AppDataParametersTest, RemovingAllDataTakesTheScopeAsGivenNotTheGlobalOne)
{
    put(folders.user(), "Pelora/scope/a.txt");
    put(folders.user(), "Pelora/other/a.txt");

    manager.removeAllData("other");

    EXPECT_EQ(folders.user().read("Pelora/scope/a.txt"), "x");
    EXPECT_FALSE(fs::exists(folders.user().file("Pelora/other")));
}

TEST_F(AppDataParametersTest, RemovingAllDataSparesAFileInTheFoldersPlace)
{
    put(folders.user(), "Pelora/scope");

    manager.removeAllData("scope");

    EXPECT_EQ(folders.user().read("Pelora/scope"), "x");
}
