#include "AppDataFixture.h"

#include <filesystem>

#include <gtest/gtest.h>

namespace fs = std::filesystem;

using RemovingAllData = AppDataFixture;

TEST_F(RemovingAllData, LeavesNothingOfTheLastScope)
{
    put(folders.user(), "Pelora/scope/domain/a.txt");
    put(folders.allUsers(), "Pelora/scope/a.txt");
    put(folders.user(), "Pelora/Downloads/a.txt");
    put(folders.allUsers(), "Pelora/Downloads/inner/a.txt");

    manager.removeAllData("scope");

    EXPECT_TRUE(fs::is_empty(folders.user().path()));
    EXPECT_TRUE(fs::is_empty(folders.allUsers().path()));
}

TEST_F(RemovingAllData, SparesOtherScopesButNotTheDownloads)
{
    put(folders.user(), "Pelora/scope/a.txt");
    put(folders.user(), "Pelora/other/a.txt");
    put(folders.user(), "Pelora/Downloads/a.txt");
    put(folders.user(), "Another/a.txt");
    put(folders.allUsers(), "Pelora/scope/a.txt");
    put(folders.allUsers(), "Pelora/other/a.txt");
    put(folders.allUsers(), "Pelora/Downloads/a.txt");
    put(folders.allUsers(), "Another/a.txt");

    manager.removeAllData("scope");

    for (const TemporaryFolder* base : {&folders.user(), &folders.allUsers()}) {
        EXPECT_FALSE(fs::exists(base->file("Pelora/scope")));
        EXPECT_FALSE(fs::exists(base->file("Pelora/Downloads")));
        EXPECT_EQ(base->read("Pelora/other/a.txt"), "x");
        EXPECT_EQ(base->read("Another/a.txt"), "x");
    }
}

TEST_F(RemovingAllData, OfTheEmptyScopeRemovesThatOfEveryScope)
{
    put(folders.user(), "Pelora/scope/a.txt");
    put(folders.allUsers(), "Pelora/other/a.txt");

    manager.removeAllData("");

    EXPECT_TRUE(fs::is_empty(folders.user().path()));
    EXPECT_TRUE(fs::is_empty(folders.allUsers().path()));
}

TEST_F(RemovingAllData, TakesTheScopeAsGivenNotTheGlobalOne)
{
    put(folders.user(), "Pelora/scope/a.txt");
    put(folders.user(), "Pelora/other/a.txt");

    manager.removeAllData("other");

    EXPECT_EQ(folders.user().read("Pelora/scope/a.txt"), "x");
    EXPECT_FALSE(fs::exists(folders.user().file("Pelora/other")));
}

TEST_F(RemovingAllData, SparesAFileInTheFoldersPlace)
{
    put(folders.user(), "Pelora/scope");

    manager.removeAllData("scope");

    EXPECT_EQ(folders.user().read("Pelora/scope"), "x");
}

TEST_F(RemovingAllData, SparesLinksAndWhatTheyName)
{
    const TemporaryFolder elsewhere;
    elsewhere.write("file", "x");
    for (const TemporaryFolder* base : {&folders.user(), &folders.allUsers()}) {
        fs::create_directory(base->file("Pelora"));
        for (const char* folder : {"Pelora/scope", "Pelora/Downloads"})
            fs::create_directory_symlink(elsewhere.path(), base->file(folder));
    }

    manager.removeAllData("scope");

    EXPECT_EQ(elsewhere.read("file"), "x");
    for (const TemporaryFolder* base : {&folders.user(), &folders.allUsers()}) {
        EXPECT_TRUE(fs::is_symlink(base->file("Pelora/scope")));
        EXPECT_TRUE(fs::is_symlink(base->file("Pelora/Downloads")));
    }
}

TEST_F(RemovingAllData, OfTheEmptyScopeSparesALinkInTheMakersPlace)
{
    const TemporaryFolder elsewhere;
    elsewhere.write("file", "x");
    fs::create_directory_symlink(elsewhere.path(), folders.user().file("Pelora"));

    manager.removeAllData("");

    EXPECT_EQ(elsewhere.read("file"), "x");
    EXPECT_TRUE(fs::is_symlink(folders.user().file("Pelora")));
}

TEST_F(RemovingAllData, SparesWhatAScopeThatLeadsElsewhereNames)
{
    for (const TemporaryFolder* base : {&folders.user(), &folders.allUsers()}) {
        put(*base, "beside.txt");
        put(*base, "Pelora/scope/inner/a.txt");
        put(*base, "Pelora/Downloads/a.txt");
    }

    using namespace std::string_literals;
    for (const std::string& scope : {"."s, ".."s, "../.."s, "scope/.."s, "./scope"s, "..\0x"s})
        manager.removeAllData(scope);

    for (const TemporaryFolder* base : {&folders.user(), &folders.allUsers()}) {
        EXPECT_EQ(base->read("beside.txt"), "x");
        EXPECT_EQ(base->read("Pelora/scope/inner/a.txt"), "x");
        EXPECT_FALSE(fs::exists(base->file("Pelora/Downloads"))) << "no matter which scope";
    }
}

TEST_F(RemovingAllData, DeletesTheFolderInAnotherThatTheScopeNames)
{
    put(folders.user(), "Pelora/scope/inner/a.txt");
    put(folders.user(), "Pelora/scope/b.txt");

    manager.removeAllData("scope/inner");

    EXPECT_FALSE(fs::exists(folders.user().file("Pelora/scope/inner")));
    EXPECT_EQ(folders.user().read("Pelora/scope/b.txt"), "x");
}

TEST_F(RemovingAllData, DeletesTheScopeWhoseNameOnlyBeginsWithFullStops)
{
    put(folders.user(), "Pelora/...");
    put(folders.user(), "Pelora/..scope/a.txt");

    manager.removeAllData("..scope");

    EXPECT_FALSE(fs::exists(folders.user().file("Pelora/..scope")));
}

TEST_F(RemovingAllData, LeavesStoresThatMakeTheirFoldersAgain)
{
    manager.writeParam(domain, "a", "1");
    manager.writeParamForAllUsers(domain, "a", "1");
    manager.writeUnformattedParam(domain, "a", "A", 1);
    manager.writeUnformattedParamForAllUsers(domain, "a", "A", 1);

    manager.removeAllData("scope");

    std::string value;
    EXPECT_FALSE(manager.readParam(domain, "a", value));
    EXPECT_FALSE(fs::exists(folders.user().file("Pelora")));
    EXPECT_TRUE(manager.writeParam(domain, "b", "2"));
    EXPECT_TRUE(manager.writeParamForAllUsers(domain, "c", "3"));
    EXPECT_EQ(folders.user().read("Pelora/scope/" + domain + ".dat"), "b=2\n");
    EXPECT_EQ(folders.allUsers().read("Pelora/scope/" + domain + ".dat"), "c=3\n");
    EXPECT_EQ(fs::status(folders.user().file("Pelora/scope")).permissions(), fs::perms{0700});
    EXPECT_EQ(fs::status(folders.allUsers().file("Pelora/scope")).permissions(), fs::perms{0755});
}

TEST_F(RemovingAllData, LeavesBinaryStoresThatMakeTheirFoldersAgain)
{
    manager.writeUnformattedParam(domain, "a", "A", 1);

    manager.removeAllData("scope");

    EXPECT_TRUE(manager.writeUnformattedParam(domain, "b", "B", 1));
    EXPECT_TRUE(manager.writeUnformattedParamForAllUsers(domain, "b", "B", 1));
    for (const TemporaryFolder* base : {&folders.user(), &folders.allUsers()})
        EXPECT_EQ(fs::file_size(base->file("Pelora/scope/" + domain + "_binary.dat")), 11U);
    EXPECT_EQ(fs::status(folders.user().file("Pelora/scope")).permissions(), fs::perms{0700});
    EXPECT_EQ(fs::status(folders.allUsers().file("Pelora/scope")).permissions(), fs::perms{0755});
}
