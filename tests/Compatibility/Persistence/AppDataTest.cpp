#include "AppData.h"

#include "PrivateDataFolders.h"

#include <filesystem>

#include <gtest/gtest.h>

TEST(AppData, FindsFilesOfItsDomain)
{
    const PrivateDataFolders folders;
    AppData::setGlobalScope("scope");
    const std::string inDomain = folders.allUsers().path() + "/Pelora/scope/domain/";
    std::filesystem::create_directories(inDomain);
    folders.allUsers().write("Pelora/scope/domain/file", "x");

    EXPECT_EQ(AppData("domain").getPathForFile("file"), inDomain);
    EXPECT_EQ(
        AppData("other").getPathForFile("file"), folders.user().path() + "/Pelora/scope/other/");
}

TEST(AppData, AllUsersDataPathIsTheSameForEveryDomain)
{
    const PrivateDataFolders folders;
    AppData::setGlobalScope("scope");

    EXPECT_EQ(AppData("").getAllUsersDataPath(), folders.allUsers().path() + "/Pelora/scope/");
    EXPECT_EQ(
        AppData("domain").getAllUsersDataPath(), folders.allUsers().path() + "/Pelora/scope/");
}
