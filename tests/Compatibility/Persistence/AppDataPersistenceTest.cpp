#include "AppDataPersistence.h"

#include "PrivateDataFolders.h"
#include "VirtualSlot.h"

#include <filesystem>

#include <gtest/gtest.h>

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

TEST_F(AppDataPersistenceTest, ReadsItsFileIntoAMap)
{
    folders.user().write(FILE_NAME, "a=1\nno parameter\nb=2\n");
    t_paramMap parameters{{"former", "x"}};

    EXPECT_TRUE(store.readPersistenceFile(parameters));

    EXPECT_EQ(parameters, (t_paramMap{{"a", "1"}, {"b", "2"}}));
}

TEST_F(AppDataPersistenceTest, EmptyFileIsReadAndHoldsNothing)
{
    folders.user().write(FILE_NAME, "");
    t_paramMap parameters{{"former", "x"}};

    EXPECT_TRUE(store.readPersistenceFile(parameters));

    EXPECT_TRUE(parameters.empty());
}

TEST_F(AppDataPersistenceTest, UnreadableFileEmptiesTheMap)
{
    t_paramMap parameters{{"former", "x"}};

    EXPECT_FALSE(store.readPersistenceFile(parameters));

    EXPECT_TRUE(parameters.empty());
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

TEST_F(AppDataPersistenceTest, RefusalMakesNoFile)
{
    EXPECT_FALSE(store.writeParam("name", "val\nue"));

    EXPECT_FALSE(fs::exists(path()));
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

TEST(StringPersistence, SlotsFollowTheDestructorInTheirFixedOrder)
{
    EXPECT_EQ(virtualSlot(&StringPersistence::writeParam), 2);
    EXPECT_EQ(virtualSlot(&StringPersistence::readParam), 3);
    EXPECT_EQ(virtualSlot(&StringPersistence::eraseAllParams), 4);
}
