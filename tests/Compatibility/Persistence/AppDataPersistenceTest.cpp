#include "AppDataPersistence.h"

#include "FullDisk.h"
#include "OrdinaryUser.h"
#include "ParameterText.h"
#include "PrivateDataFolders.h"
#include "VirtualSlot.h"

#include <filesystem>

#include <gtest/gtest.h>
#include <sys/stat.h>

namespace fs = std::filesystem;

namespace {

constexpr const char* FILE_NAME = "Pelora/scope/domain.dat";

class AppDataPersistenceTest : public testing::Test {
protected:
    std::string content() const { return folders.user().read(FILE_NAME); }
    std::string path() const { return folders.user().file(FILE_NAME); }
    bool fails(const std::string& name)
    {
        std::string value = "untouched";
        return !store.readParam(name, value) && value == "untouched";
    }
    std::string valueOf(const std::string& name)
    {
        std::string value;
        EXPECT_TRUE(store.readParam(name, value)) << name;
        return value;
    }

    PrivateDataFolders folders;
    AppDataPersistence store{"scope", "domain", PERSISTENCE_CURRENT_USER};
};

} // namespace

TEST_F(AppDataPersistenceTest, FileIsTheDomainsInTheFolderOfTheScope)
{
    EXPECT_EQ(
        AppDataPersistence::getPersistenceFilePath("a", "b", PERSISTENCE_CURRENT_USER),
        folders.user().path() + "/Pelora/a/b.dat");
    EXPECT_EQ(
        AppDataPersistence::getPersistenceFilePath("a", "b", PERSISTENCE_ALL_USERS),
        folders.allUsers().path() + "/Pelora/a/b.dat");
}

TEST_F(AppDataPersistenceTest, ConstructionMakesTheFolderButNoFile)
{
    EXPECT_TRUE(fs::is_directory(folders.user().file("Pelora/scope")));
    EXPECT_TRUE(fs::is_empty(folders.user().file("Pelora/scope")));
}

TEST_F(AppDataPersistenceTest, ReadsNothingFromAMissingFile)
{
    EXPECT_TRUE(fails("a"));
}

TEST_F(AppDataPersistenceTest, WritesLinesSortedByName)
{
    EXPECT_TRUE(store.writeParam("b", "2"));
    EXPECT_TRUE(store.writeParam("a", "1"));

    EXPECT_EQ(content(), "a=1\nb=2\n");
}

TEST_F(AppDataPersistenceTest, ReadsWhatItWrote)
{
    store.writeParam("a", "1");
    store.writeParam("b", "x=y=");
    store.writeParam("c", "");

    EXPECT_EQ(valueOf("a"), "1");
    EXPECT_EQ(valueOf("b"), "x=y=");
    EXPECT_EQ(valueOf("c"), "");
    EXPECT_TRUE(fails("d"));
}

TEST_F(AppDataPersistenceTest, ReplacesValueOfExistingName)
{
    store.writeParam("a", "a longer value");
    store.writeParam("a", "1");

    EXPECT_EQ(content(), "a=1\n");
}

TEST_F(AppDataPersistenceTest, ReadsFileOfAnotherRun)
{
    folders.user().write(FILE_NAME, "a=1\nb=2");

    EXPECT_EQ(valueOf("a"), "1");
    EXPECT_EQ(valueOf("b"), "2");
}

TEST_F(AppDataPersistenceTest, KeepsLineWithoutEqualsSignWhenItRewrites)
{
    folders.user().write(FILE_NAME, "a=1\nno parameter\n\nc=3");

    EXPECT_TRUE(store.writeParam("b", "2"));

    EXPECT_EQ(content(), "no parameter\n\na=1\nb=2\nc=3\n");
}

TEST_F(AppDataPersistenceTest, RefusesWhatCouldNotBeReadBack)
{
    store.writeParam("a", "1");

    EXPECT_FALSE(store.writeParam("na=me", "value"));
    EXPECT_FALSE(store.writeParam("na\nme", "value"));
    EXPECT_FALSE(store.writeParam("name", "val\nue"));

    EXPECT_EQ(content(), "a=1\n");
}

TEST_F(AppDataPersistenceTest, EraseLeavesAnEmptyFile)
{
    folders.user().write(FILE_NAME, "no parameter\na=1\n");

    store.eraseAllParams();

    ASSERT_TRUE(fs::exists(path()));
    EXPECT_EQ(fs::file_size(path()), 0U);
    EXPECT_TRUE(fails("a"));
}

TEST_F(AppDataPersistenceTest, EraseMakesNoFile)
{
    store.eraseAllParams();

    EXPECT_FALSE(fs::exists(path()));
}

TEST_F(AppDataPersistenceTest, ScopesOfUsersAreApart)
{
    AppDataPersistence allUsers("scope", "domain", PERSISTENCE_ALL_USERS);

    store.writeParam("a", "user");
    allUsers.writeParam("a", "all");

    EXPECT_EQ(content(), "a=user\n");
    EXPECT_EQ(folders.allUsers().read(FILE_NAME), "a=all\n");
}

TEST_F(AppDataPersistenceTest, NewFileIsReadableByOthersAndWritableByItsOwnerAlone)
{
    AppDataPersistence allUsers("scope", "domain", PERSISTENCE_ALL_USERS);

    allUsers.writeParam("a", "1");

    EXPECT_EQ(fs::status(folders.allUsers().file(FILE_NAME)).permissions(), fs::perms{0644});
}

TEST_F(AppDataPersistenceTest, LeavesNoOtherFileBehind)
{
    store.writeParam("a", "1");
    store.writeParam("a", "2");

    const fs::directory_iterator entries(folders.user().file("Pelora/scope"));
    EXPECT_EQ(std::distance(begin(entries), end(entries)), 1);
}

TEST_F(AppDataPersistenceTest, FolderInTheFilesPlaceIsRefused)
{
    fs::create_directories(path() + "/inside");

    EXPECT_TRUE(fails("a"));
    EXPECT_FALSE(store.writeParam("a", "1"));
    store.eraseAllParams();

    EXPECT_TRUE(fs::is_directory(path() + "/inside"));
}

TEST_F(AppDataPersistenceTest, FifoInTheFilesPlaceIsRefusedWithoutWaiting)
{
    ASSERT_EQ(mkfifo(path().c_str(), 0600), 0);

    EXPECT_TRUE(fails("a"));
    EXPECT_FALSE(store.writeParam("a", "1"));
    store.eraseAllParams();

    EXPECT_TRUE(fs::is_fifo(path()));
}

TEST_F(AppDataPersistenceTest, FileInTheFoldersPlaceIsRefused)
{
    const TemporaryFolder home;
    const ScopedEnvironment variable("XDG_DATA_HOME", home.path());
    home.write("Pelora", "x");
    AppDataPersistence blocked("scope", "domain", PERSISTENCE_CURRENT_USER);
    std::string value;

    EXPECT_FALSE(blocked.writeParam("a", "1"));
    EXPECT_FALSE(blocked.readParam("a", value));

    EXPECT_EQ(home.read("Pelora"), "x");
}

TEST_F(AppDataPersistenceTest, UnwritableFileAndFolderKeepTheOldContent)
{
    store.writeParam("a", "1");
    fs::permissions(folders.user().path(), fs::perms{0755});
    fs::permissions(folders.user().file("Pelora"), fs::perms{0755});
    fs::permissions(folders.user().file("Pelora/scope"), fs::perms{0755});

    EXPECT_TRUE(asOrdinaryUser([this] {
        return valueOf("a") == "1" && !store.writeParam("a", "2") && valueOf("a") == "1";
    }));

    EXPECT_EQ(content(), "a=1\n");
}

TEST_F(AppDataPersistenceTest, WriteThatFailsHalfwayKeepsTheOldContent)
{
    store.writeParam("a", "1");

    EXPECT_TRUE(onFullDisk(10, [this] { return !store.writeParam("a", std::string(100, 'x')); }));

    EXPECT_EQ(content(), "a=1\n");
}

TEST_F(AppDataPersistenceTest, UnreadableFileIsNotReplacedByTheOneNewParameter)
{
    store.writeParam("a", "1");
    fs::permissions(path(), fs::perms{0});
    for (const char* folder : {"", "Pelora", "Pelora/scope"})
        fs::permissions(folders.user().file(folder), fs::perms{0777});

    EXPECT_TRUE(asOrdinaryUser([this] { return fails("a") && !store.writeParam("b", "2"); }));

    EXPECT_EQ(content(), "a=1\n");
}

TEST_F(AppDataPersistenceTest, TwoProcessesNeverLeaveHalfOfEach)
{
    constexpr int rounds = 50;
    const std::string large(20000, 'x');
    const std::string larger(30000, 'y');
    const auto write = [](const std::string& value) {
        AppDataPersistence own("scope", "domain", PERSISTENCE_CURRENT_USER);
        bool written = true;
        for (int round = 0; round < rounds; ++round)
            written = own.writeParam("a", value) && written;
        return written;
    };
    store.writeParam("a", large);

    const pid_t other = fork();
    if (other == 0)
        _exit(write(larger) ? EXIT_SUCCESS : EXIT_FAILURE);
    bool whole = true;
    for (int round = 0; round < rounds; ++round) {
        const std::string seen = valueOf("a");
        whole = whole && (seen == large || seen == larger);
    }
    EXPECT_TRUE(write(large));
    int status = 0;
    ASSERT_EQ(waitpid(other, &status, 0), other);

    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == EXIT_SUCCESS);
    EXPECT_TRUE(whole);
    EXPECT_TRUE(content() == "a=" + large + "\n" || content() == "a=" + larger + "\n");
}

TEST_F(AppDataPersistenceTest, HoldsAHundredThousandParameters)
{
    std::string lines;
    for (int number = 100000; number < 200000; ++number)
        lines += "name" + std::to_string(number) + "=value " + std::to_string(number) + "\n";
    folders.user().write(FILE_NAME, lines);

    EXPECT_TRUE(store.writeParam("name200000", "value 200000"));

    EXPECT_EQ(content(), lines + "name200000=value 200000\n");
    EXPECT_EQ(valueOf("name100000"), "value 100000");
    EXPECT_EQ(valueOf("name199999"), "value 199999");
}

TEST(StringPersistence, SlotsFollowTheDestructorInTheirFixedOrder)
{
    EXPECT_EQ(virtualSlot(&StringPersistence::writeParam), 2);
    EXPECT_EQ(virtualSlot(&StringPersistence::readParam), 3);
    EXPECT_EQ(virtualSlot(&StringPersistence::eraseAllParams), 4);
}
