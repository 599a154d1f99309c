#include "AppDataFixture.h"
#include "OwnedBytes.h"

#include <filesystem>

#include <gtest/gtest.h>

namespace fs = std::filesystem;
using namespace std::string_literals;

namespace {

using Names = std::list<std::string>;

class AppDataParametersTest : public AppDataFixture {
protected:
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
    manager.writeParamForAllUsers(domain, "a", "1");

    manager.setGlobalScope("other");
    manager.writeParam(domain, "b", "2");
    manager.writeParamForAllUsers(domain, "b", "2");
    manager.writeParam(domain + " of later", "c", "3");

    EXPECT_EQ(userFile(".dat"), "a=1\nb=2\n");
    EXPECT_EQ(allUsersFile(".dat"), "a=1\nb=2\n");
    EXPECT_EQ(folders.user().read("Pelora/other/" + domain + " of later.dat"), "c=3\n");
}

TEST_F(AppDataParametersTest, BinaryStoresKeepTheirFilesWhenTheScopeChanges)
{
    manager.writeUnformattedParam(domain, "a", "A", 1);
    manager.writeUnformattedParamForAllUsers(domain, "a", "A", 1);

    manager.setGlobalScope("other");
    manager.writeUnformattedParam(domain, "b", "B", 1);
    manager.writeUnformattedParamForAllUsers(domain, "b", "B", 1);
    manager.writeUnformattedParam(domain + " of later", "c", "C", 1);

    const std::string both = "\x02\0\0\0a\0\x01\0\0\0A\x02\0\0\0b\0\x01\0\0\0B"s;
    EXPECT_EQ(userFile("_binary.dat"), both);
    EXPECT_EQ(allUsersFile("_binary.dat"), both);
    EXPECT_EQ(
        folders.user().read("Pelora/other/" + domain + " of later_binary.dat"),
        "\x02\0\0\0c\0\x01\0\0\0C"s);
}

TEST_F(AppDataParametersTest, EmptyDomainKeepsItsParametersInFilesOfNoName)
{
    manager.setGlobalScope(domain);

    manager.writeParam("", "a", "1");
    manager.writeUnformattedParam("", "a", "A", 1);

    EXPECT_EQ(folders.user().read("Pelora/" + domain + "/.dat"), "a=1\n");
    EXPECT_EQ(
        folders.user().read("Pelora/" + domain + "/_binary.dat"), "\x02\0\0\0a\0\x01\0\0\0A"s);
}

TEST_F(AppDataParametersTest, EmptyScopeKeepsItsParametersInTheMakersFolder)
{
    manager.setGlobalScope("");

    manager.writeParam(domain, "a", "1");
    manager.writeParamForAllUsers(domain, "b", "2");
    manager.writeUnformattedParam(domain, "a", "A", 1);

    EXPECT_EQ(folders.user().read("Pelora/" + domain + ".dat"), "a=1\n");
    EXPECT_EQ(folders.allUsers().read("Pelora/" + domain + ".dat"), "b=2\n");
    EXPECT_EQ(folders.user().read("Pelora/" + domain + "_binary.dat"), "\x02\0\0\0a\0\x01\0\0\0A"s);
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
    for (const TemporaryFolder* base : {&folders.user(), &folders.allUsers()}) {
        EXPECT_EQ(fs::file_size(base->file("Pelora/scope/" + domain + ".dat")), 0U);
        EXPECT_EQ(fs::file_size(base->file("Pelora/scope/" + domain + "_binary.dat")), 0U);
    }
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

// A folder's content is found right behind the folder, which is not its place among the paths.
TEST_F(AppDataParametersTest, ListsFilesInTheOrderOfTheBytesOfTheirPaths)
{
    put(folders.user(), "Pelora/scope/domain/inner/deep.txt");
    put(folders.user(), "Pelora/scope/domain/inner.d");
    put(folders.allUsers(), "Pelora/scope/domain/a.txt");

    EXPECT_EQ(manager.getFiles("domain"), (Names{"a.txt", "inner.d", "inner/deep.txt"}));
}

TEST_F(AppDataParametersTest, DoesNotListNamesWithoutAFullStop)
{
    put(folders.user(), "Pelora/scope/domain/plain");
    put(folders.user(), "Pelora/scope/domain/inner.d/plain");

    EXPECT_EQ(manager.getFiles("domain"), (Names{"inner.d", "inner.d/plain"}));
}

TEST_F(AppDataParametersTest, ListsTheWholeScopeForTheEmptyDomain)
{
    put(folders.user(), "Pelora/scope/a.txt");
    put(folders.allUsers(), "Pelora/scope/domain/b.txt");

    EXPECT_EQ(manager.getFiles(""), (Names{"a.txt", "domain/b.txt"}));
}

TEST_F(AppDataParametersTest, ListsFilesOfTheEmptyScope)
{
    manager.setGlobalScope("");
    put(folders.user(), "Pelora/domain/a.txt");
    put(folders.allUsers(), "Pelora/domain/b.txt");

    EXPECT_EQ(manager.getFiles("domain"), (Names{"a.txt", "b.txt"}));
}

TEST_F(AppDataParametersTest, ListsNothingOfMissingFolders)
{
    EXPECT_EQ(manager.getFiles("domain"), Names());
}
