#include "DataFolder.h"

#include "OrdinaryUser.h"
#include "PrivateDataFolders.h"

#include <filesystem>

#include <gtest/gtest.h>

namespace fs = std::filesystem;

TEST(DataFolder, ModesHaveTheirFixedValues)
{
    EXPECT_EQ(static_cast<int>(PERSISTENCE_ALL_USERS), 0);
    EXPECT_EQ(static_cast<int>(PERSISTENCE_CURRENT_USER), 1);
}

TEST(DataFolder, BaseIsThatOfTheMode)
{
    const PrivateDataFolders folders;

    EXPECT_EQ(DataFolder::getBase(PERSISTENCE_ALL_USERS), folders.allUsers().path());
    EXPECT_EQ(DataFolder::getBase(PERSISTENCE_CURRENT_USER), folders.user().path());
}

TEST(DataFolder, BaseOfAnyOtherValueIsEmpty)
{
    const PrivateDataFolders folders;

    EXPECT_EQ(DataFolder::getBase(static_cast<t_PersistenceMode>(2)), "");
    EXPECT_EQ(DataFolder::getBase(static_cast<t_PersistenceMode>(-1)), "");
}

TEST(DataFolder, WithoutBaseThePathBeginsAtTheMaker)
{
    // Nobody may make a folder there, so that the test leaves none behind.
    EXPECT_TRUE(asOrdinaryUser([] {
        return DataFolder::create("scope", static_cast<t_PersistenceMode>(2)) == "/Pelora/scope/";
    }));
}

TEST(DataFolder, MakesTheFolderOfTheScope)
{
    const PrivateDataFolders folders;

    EXPECT_EQ(
        DataFolder::create("scope", PERSISTENCE_CURRENT_USER),
        folders.user().path() + "/Pelora/scope/");

    EXPECT_TRUE(fs::is_directory(folders.user().file("Pelora/scope")));
    EXPECT_TRUE(fs::is_empty(folders.allUsers().path()));
}

TEST(DataFolder, LeavesAnExistingFolderAlone)
{
    const PrivateDataFolders folders;
    fs::create_directories(folders.user().file("Pelora/scope"));
    fs::permissions(folders.user().file("Pelora/scope"), fs::perms{0750});
    folders.user().write("Pelora/scope/file", "x");

    DataFolder::create("scope", PERSISTENCE_CURRENT_USER);

    EXPECT_EQ(folders.user().read("Pelora/scope/file"), "x");
    EXPECT_EQ(fs::status(folders.user().file("Pelora/scope")).permissions(), fs::perms{0750});
}

TEST(DataFolder, OfTheEmptyScopeEndsInTwoSeparators)
{
    const PrivateDataFolders folders;

    EXPECT_EQ(
        DataFolder::create("", PERSISTENCE_ALL_USERS), folders.allUsers().path() + "/Pelora//");

    EXPECT_TRUE(fs::is_directory(folders.allUsers().file("Pelora")));
}

TEST(DataFolder, OfAllUsersIsWritableByItsOwnerAlone)
{
    const PrivateDataFolders folders;

    DataFolder::create("scope", PERSISTENCE_ALL_USERS);

    EXPECT_EQ(fs::status(folders.allUsers().file("Pelora")).permissions(), fs::perms{0755});
    EXPECT_EQ(fs::status(folders.allUsers().file("Pelora/scope")).permissions(), fs::perms{0755});
}

TEST(DataFolder, OfTheUserIsClosedToOthersWithAllThatIsMissingAboveIt)
{
    const TemporaryFolder home;
    const ScopedEnvironment variable("XDG_DATA_HOME", home.file("share/data"));

    DataFolder::create("scope", PERSISTENCE_CURRENT_USER);

    for (const char* made : {"share", "share/data", "share/data/Pelora", "share/data/Pelora/scope"})
        EXPECT_EQ(fs::status(home.file(made)).permissions(), fs::perms{0700}) << made;
}

TEST(DataFolder, ThatCannotBeMadeStillHasItsPath)
{
    const TemporaryFolder home;
    const ScopedEnvironment variable("XDG_DATA_HOME", home.write("file", "x"));

    EXPECT_EQ(
        DataFolder::create("scope", PERSISTENCE_CURRENT_USER), home.file("file/Pelora/scope/"));

    EXPECT_EQ(home.read("file"), "x");
}
