#include "AppDataManager.h"
#include "OrdinaryUser.h"
#include "OwnedBytes.h"
#include "PrivateDataFolders.h"

#include <filesystem>

#include <gtest/gtest.h>

namespace fs = std::filesystem;

namespace {

/// What stands in the place of the user's file, from which nothing can be read. The target is a
/// file with another value of the parameter.
struct Obstacle {
    const char* name;
    void (*make)(const fs::path& path, const fs::path& target);

    friend void PrintTo(const Obstacle& obstacle, std::ostream* out) { *out << obstacle.name; }
};

/// A parameter that all users have, and a user's file that is no use.
class ParameterFallback : public testing::TestWithParam<Obstacle> {
protected:
    ParameterFallback() { manager.setGlobalScope("scope"); }

    /// Puts the obstacle in the place of the user's file and lets an ordinary user come there.
    void obstructUsersFile(const std::string& suffix) const
    {
        const std::string name = "Pelora/scope/" + domain + suffix;
        fs::copy_file(folders.user().file(name), folders.user().file("target"));
        fs::remove(folders.user().file(name));
        GetParam().make(folders.user().file(name), folders.user().file("target"));
        for (const TemporaryFolder* base : {&folders.user(), &folders.allUsers()}) {
            for (const char* folder : {"", "Pelora", "Pelora/scope"})
                fs::permissions(base->file(folder), fs::perms{0755});
        }
    }

    PrivateDataFolders folders;
    const std::string domain =
        std::string(testing::UnitTest::GetInstance()->current_test_info()->test_suite_name()) +
        GetParam().name;
    AppDataManager& manager = *AppDataManager::getInstance();
};

} // namespace

TEST_P(ParameterFallback, IsTheTextOfAllUsers)
{
    manager.writeParam(domain, "a", "user");
    manager.writeParamForAllUsers(domain, "a", "all");
    obstructUsersFile(".dat");

    EXPECT_TRUE(asOrdinaryUser([this] {
        std::string value;
        return manager.readParam(domain, "a", value) && value == "all";
    }));
}

TEST_P(ParameterFallback, IsTheBytesOfAllUsers)
{
    manager.writeUnformattedParam(domain, "a", "U", 1);
    manager.writeUnformattedParamForAllUsers(domain, "a", "A", 1);
    obstructUsersFile("_binary.dat");

    EXPECT_TRUE(asOrdinaryUser([this] {
        int size = 0;
        const OwnedBytes data(manager.readUnformattedParam(domain, "a", size));
        return data != nullptr && size == 1 && data[0] == 'A';
    }));
}

INSTANTIATE_TEST_SUITE_P(
    UsersFile, ParameterFallback,
    testing::Values(
        Obstacle{
            "Unreadable",
            [](const fs::path& path, const fs::path& target) {
                fs::copy_file(target, path);
                fs::permissions(path, fs::perms{0});
            }},
        Obstacle{
            "Link",
            [](const fs::path& path, const fs::path& target) { fs::create_symlink(target, path); }},
        Obstacle{
            "DanglingLink",
            [](const fs::path& path, const fs::path& target) {
                fs::create_symlink(target / "missing", path);
            }},
        Obstacle{
            "Folder",
            [](const fs::path& path, const fs::path& /*target*/) { fs::create_directory(path); }}),
    [](const auto& row) { return std::string(row.param.name); });
