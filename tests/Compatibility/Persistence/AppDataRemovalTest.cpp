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
    put(folders.user(), "Pelora/a.txt");
    put(folders.user(), "Pelora/Downloads/a.txt");
    put(folders.allUsers(), "Pelora/other/inner/a.txt");

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

TEST_F(RemovingAllData, EmptiesWhatALinkInAFoldersPlaceNamesAndLeavesTheLink)
{
    for (const TemporaryFolder* base : {&folders.user(), &folders.allUsers()}) {
        fs::create_directory(base->file("Pelora"));
        for (const char* folder : {"scope", "Downloads"}) {
            put(*base, std::string("target of ") + folder + "/inner/a.txt");
            fs::create_directory_symlink(
                std::string("../target of ") + folder, base->file(std::string("Pelora/") + folder));
        }
    }

    manager.removeAllData("scope");

    for (const TemporaryFolder* base : {&folders.user(), &folders.allUsers()}) {
        for (const char* folder : {"scope", "Downloads"}) {
            EXPECT_TRUE(fs::is_symlink(base->file(std::string("Pelora/") + folder)));
            ASSERT_TRUE(fs::is_directory(base->file(std::string("target of ") + folder)));
            EXPECT_TRUE(fs::is_empty(base->file(std::string("target of ") + folder)));
        }
    }
}

TEST_F(RemovingAllData, SparesWhatALinkInsideTheFolderNames)
{
    put(folders.user(), "elsewhere/a.txt");
    put(folders.user(), "Pelora/scope/a.txt");
    fs::create_directory_symlink("../../elsewhere", folders.user().file("Pelora/scope/link"));

    manager.removeAllData("scope");

    EXPECT_FALSE(fs::exists(folders.user().file("Pelora")));
    EXPECT_EQ(folders.user().read("elsewhere/a.txt"), "x");
}

TEST_F(RemovingAllData, OfTheEmptyScopeEmptiesWhatALinkInTheMakersPlaceNames)
{
    put(folders.user(), "target/scope/a.txt");
    fs::create_directory_symlink("target", folders.user().file("Pelora"));

    manager.removeAllData("");

    EXPECT_TRUE(fs::is_empty(folders.user().file("target")));
    EXPECT_TRUE(fs::is_symlink(folders.user().file("Pelora")));
}

TEST_F(RemovingAllData, TakesAScopeWithTwoFullStopsAsItIs)
{
    for (const TemporaryFolder* base : {&folders.user(), &folders.allUsers()}) {
        put(*base, "beside.txt");
        put(*base, "Another/a.txt");
        put(*base, "Pelora/scope/a.txt");
    }

    manager.removeAllData("..");

    EXPECT_TRUE(fs::is_empty(folders.user().path()));
    EXPECT_TRUE(fs::is_empty(folders.allUsers().path()));
}

TEST_F(RemovingAllData, FollowsTheFullStopsInsideAScope)
{
    put(folders.user(), "Pelora/scope/a.txt");
    put(folders.user(), "Pelora/other/a.txt");
    put(folders.allUsers(), "Pelora/scope/a.txt");
    put(folders.allUsers(), "Pelora/other/a.txt");

    manager.removeAllData("other/./../scope");

    for (const TemporaryFolder* base : {&folders.user(), &folders.allUsers()}) {
        EXPECT_FALSE(fs::exists(base->file("Pelora/scope")));
        EXPECT_EQ(base->read("Pelora/other/a.txt"), "x");
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
