#include "AppData.h"

#include "OwnedBytes.h"
#include "PrivateDataFolders.h"

#include <filesystem>

#include <gtest/gtest.h>

namespace fs = std::filesystem;
using namespace std::string_literals;

namespace {

using Names = std::list<std::string>;

std::string readBytes(const AppData& data, const std::string& name)
{
    int size = 0;
    const OwnedBytes bytes(data.readUnformattedParam(name, size));
    return bytes == nullptr ? "none" : std::string(bytes.get(), static_cast<std::size_t>(size));
}

} // namespace

TEST(AppData, FindsFilesOfItsDomain)
{
    const PrivateDataFolders folders;
    AppData::setGlobalScope("scope");
    const std::string inDomain = folders.allUsers().path() + "/Pelora/scope/domain/";
    fs::create_directories(inDomain);
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

TEST(AppData, ListsFilesOfItsDomain)
{
    const PrivateDataFolders folders;
    AppData::setGlobalScope("scope");
    fs::create_directories(folders.user().file("Pelora/scope/domain"));
    folders.user().write("Pelora/scope/domain/a.txt", "x");

    EXPECT_EQ(AppData("domain").getFiles(), Names{"a.txt"});
    EXPECT_EQ(AppData("other").getFiles(), Names());
}

TEST(AppData, MakesTheAllUsersDataFolder)
{
    const PrivateDataFolders folders;
    AppData::setGlobalScope("scope");

    AppData("").createAllUsersDataFolder();

    EXPECT_TRUE(fs::is_directory(folders.allUsers().file("Pelora/scope")));
}

TEST(AppData, KeepsTextParametersOfItsDomain)
{
    const PrivateDataFolders folders;
    AppData::setGlobalScope("scope");
    const AppData data("texts");
    std::string value;

    EXPECT_TRUE(data.writeParam("a", "1"));
    EXPECT_TRUE(data.writeParamForAllUsers("b", "2"));

    EXPECT_EQ(folders.user().read("Pelora/scope/texts.dat"), "a=1\n");
    EXPECT_EQ(folders.allUsers().read("Pelora/scope/texts.dat"), "b=2\n");
    EXPECT_TRUE(data.readParam("b", value));
    EXPECT_EQ(value, "2");
    EXPECT_FALSE(AppData("no texts").readParam("a", value));
}

TEST(AppData, KeepsBinaryParametersOfItsDomain)
{
    const PrivateDataFolders folders;
    AppData::setGlobalScope("scope");
    const AppData data("bytes");

    EXPECT_TRUE(data.writeUnformattedParam("a", "A", 1));
    EXPECT_TRUE(data.writeUnformattedParamForAllUsers("b", "B", 1));

    EXPECT_EQ(folders.user().read("Pelora/scope/bytes_binary.dat"), "\x02\0\0\0a\0\x01\0\0\0A"s);
    EXPECT_EQ(
        folders.allUsers().read("Pelora/scope/bytes_binary.dat"), "\x02\0\0\0b\0\x01\0\0\0B"s);
    EXPECT_EQ(readBytes(data, "a"), "A");
    EXPECT_EQ(readBytes(data, "b"), "B");
    EXPECT_EQ(readBytes(AppData("no bytes"), "a"), "none");
}

TEST(AppData, RemovesTheParametersOfItsDomain)
{
    const PrivateDataFolders folders;
    AppData::setGlobalScope("scope");
    const AppData data("removed");
    data.writeParam("a", "1");
    data.writeUnformattedParam("a", "A", 1);
    std::string value;

    data.removeData();

    EXPECT_FALSE(data.readParam("a", value));
    EXPECT_EQ(readBytes(data, "a"), "none");
}

TEST(AppData, RemovesAllDataOfAScope)
{
    const PrivateDataFolders folders;
    fs::create_directories(folders.user().file("Pelora/scope/domain"));

    AppData::removeAllData("scope");

    EXPECT_TRUE(fs::is_empty(folders.user().path()));
}
