#include "PersistenceManager.h"

#include "BlockedViolations.h"
#include "CrashReport.h"
#include "PrivateDataFolders.h"

#include <cstdio>

#include <gtest/gtest.h>

namespace {

class MockPersistence : public StringPersistence {
public:
    MOCK_METHOD(bool, writeParam, (const std::string& name, const std::string& value), (override));
    MOCK_METHOD(bool, readParam, (const std::string& name, std::string& value), (override));
    MOCK_METHOD(void, eraseAllParams, (), (override));
};

class PersistenceManagerTest : public testing::Test {
protected:
    std::unique_ptr<MockPersistence> owned = std::make_unique<MockPersistence>();
    MockPersistence& store = *owned;
    PersistenceManager manager{std::move(owned)};
};

void writeWhileViolationsAreBlocked(PersistenceManager& manager, const std::string& name)
{
    const BlockedViolations blocked;
    if (!manager.writeParam(name, "1"))
        std::fputs("not written\n", stderr);
}

} // namespace

using testing::DoAll;
using testing::Eq;
using testing::Return;
using testing::SetArgReferee;

TEST_F(PersistenceManagerTest, PassesReadingOn)
{
    EXPECT_CALL(store, readParam("a", Eq("before")))
        .WillOnce(DoAll(SetArgReferee<1>("after"), Return(true)));
    std::string value = "before";

    EXPECT_TRUE(manager.readParam("a", value));

    EXPECT_EQ(value, "after");
}

TEST_F(PersistenceManagerTest, PassesTheFailureToReadOn)
{
    EXPECT_CALL(store, readParam).WillOnce(Return(false));
    std::string value;

    EXPECT_FALSE(manager.readParam("a", value));
}

TEST_F(PersistenceManagerTest, PassesTheReadingOfTheEmptyNameOn)
{
    EXPECT_CALL(store, readParam("", Eq("before"))).WillOnce(Return(true));
    std::string value = "before";

    EXPECT_TRUE(manager.readParam("", value));
}

TEST_F(PersistenceManagerTest, PassesWritingAndItsResultOn)
{
    EXPECT_CALL(store, writeParam("a", "1")).WillOnce(Return(true)).WillOnce(Return(false));

    EXPECT_TRUE(manager.writeParam("a", "1"));
    EXPECT_FALSE(manager.writeParam("a", "1"));
}

TEST_F(PersistenceManagerTest, PassesErasingOn)
{
    EXPECT_CALL(store, eraseAllParams());

    manager.eraseAllParams();
}

TEST(PersistenceManager, KeepsItsParametersInTheFileOfScopeDomainAndMode)
{
    const PrivateDataFolders folders;
    PersistenceManager user("scope", "domain", PERSISTENCE_CURRENT_USER);
    PersistenceManager allUsers("scope", "domain", PERSISTENCE_ALL_USERS);

    EXPECT_TRUE(user.writeParam("a", "1"));
    EXPECT_TRUE(allUsers.writeParam("b", "2"));

    EXPECT_EQ(folders.user().read("Pelora/scope/domain.dat"), "a=1\n");
    EXPECT_EQ(folders.allUsers().read("Pelora/scope/domain.dat"), "b=2\n");
}

TEST(PersistenceManagerDeathTest, WritingRequiresAStore)
{
    PersistenceManager manager(nullptr);

    EXPECT_CRASH_REPORT(
        manager.writeParam("a", "1"),
        "REQUIRE VIOLATION : m_persistenceObject != NULL - In File : "
        "Compatibility/Persistence/src/PersistenceManager - At Line : <line>");
}

TEST(PersistenceManagerDeathTest, WritingRequiresAName)
{
    const PrivateDataFolders folders;
    PersistenceManager manager("scope", "domain", PERSISTENCE_CURRENT_USER);

    EXPECT_CRASH_REPORT(
        manager.writeParam("", "1"),
        "REQUIRE VIOLATION : !name.empty() - In File : "
        "Compatibility/Persistence/src/PersistenceManager - At Line : <line>");
}

TEST(PersistenceManagerDeathTest, WritesNothingWithoutAStoreWhereViolationsAreBlocked)
{
    PersistenceManager manager(nullptr);

    EXPECT_CRASH_REPORT(
        writeWhileViolationsAreBlocked(manager, "a"),
        "not written\n"
        "REQUIRE VIOLATION : m_persistenceObject != NULL - In File : "
        "Compatibility/Persistence/src/PersistenceManager - At Line : <line>");
}

TEST(PersistenceManagerDeathTest, WritesNothingWithoutANameWhereViolationsAreBlocked)
{
    const PrivateDataFolders folders;
    PersistenceManager manager("scope", "domain", PERSISTENCE_CURRENT_USER);

    EXPECT_CRASH_REPORT(
        writeWhileViolationsAreBlocked(manager, ""),
        "not written\n"
        "REQUIRE VIOLATION : !name.empty() - In File : "
        "Compatibility/Persistence/src/PersistenceManager - At Line : <line>");
    EXPECT_EQ(folders.user().read("Pelora/scope/domain.dat"), "");
}
