#include "BinaryPersistenceManager.h"

#include "BlockedViolations.h"
#include "CrashReport.h"
#include "PrivateDataFolders.h"

#include <cstdio>

#include <gtest/gtest.h>

using namespace std::string_literals;

namespace {

class MockPersistence : public BinaryPersistence {
public:
    MOCK_METHOD(
        bool, writeUnformattedParam, (const std::string& name, const char* data, int size),
        (override));
    MOCK_METHOD(char*, readUnformattedParam, (const std::string& name, int& size), (override));
    MOCK_METHOD(void, eraseAllParams, (), (override));
    MOCK_METHOD(
        std::string, getPersistenceFilePath,
        (const std::string& scope, const std::string& domain, t_PersistenceMode mode), (override));
    MOCK_METHOD(bool, readPersistenceFile, (t_BinaryParamMap & parameters), (override));
    MOCK_METHOD(bool, writePersistenceFile, (const t_BinaryParamMap& parameters), (override));
};

class BinaryPersistenceManagerTest : public testing::Test {
protected:
    std::unique_ptr<MockPersistence> owned = std::make_unique<MockPersistence>();
    MockPersistence& store = *owned;
    BinaryPersistenceManager manager{std::move(owned)};
};

void writeWhileViolationsAreBlocked(BinaryPersistenceManager& manager, const std::string& name)
{
    const BlockedViolations blocked;
    if (!manager.writeUnformattedParam(name, "A", 1))
        std::fputs("not written\n", stderr);
}

} // namespace

using testing::DoAll;
using testing::Eq;
using testing::Return;
using testing::SetArgReferee;

TEST_F(BinaryPersistenceManagerTest, PassesReadingOn)
{
    char data = 'x';
    EXPECT_CALL(store, readUnformattedParam("a", Eq(0)))
        .WillOnce(DoAll(SetArgReferee<1>(1), Return(&data)))
        .WillOnce(Return(nullptr));
    int size = 0;

    EXPECT_EQ(manager.readUnformattedParam("a", size), &data);
    EXPECT_EQ(size, 1);
    size = 0;
    EXPECT_EQ(manager.readUnformattedParam("a", size), nullptr);
}

TEST_F(BinaryPersistenceManagerTest, PassesTheReadingOfTheEmptyNameOn)
{
    char data = 'x';
    EXPECT_CALL(store, readUnformattedParam("", Eq(0))).WillOnce(Return(&data));
    int size = 0;

    EXPECT_EQ(manager.readUnformattedParam("", size), &data);
}

TEST_F(BinaryPersistenceManagerTest, PassesWritingAndItsResultOn)
{
    const char* const data = "x";
    EXPECT_CALL(store, writeUnformattedParam("a", data, 1))
        .WillOnce(Return(true))
        .WillOnce(Return(false));

    EXPECT_TRUE(manager.writeUnformattedParam("a", data, 1));
    EXPECT_FALSE(manager.writeUnformattedParam("a", data, 1));
}

TEST_F(BinaryPersistenceManagerTest, PassesErasingOn)
{
    EXPECT_CALL(store, eraseAllParams());

    manager.eraseAllParams();
}

TEST(BinaryPersistenceManager, KeepsItsParametersInTheFileOfScopeDomainAndMode)
{
    const PrivateDataFolders folders;
    BinaryPersistenceManager user("scope", "domain", PERSISTENCE_CURRENT_USER);
    BinaryPersistenceManager allUsers("scope", "domain", PERSISTENCE_ALL_USERS);

    EXPECT_TRUE(user.writeUnformattedParam("a", "A", 1));
    EXPECT_TRUE(allUsers.writeUnformattedParam("b", "B", 1));

    EXPECT_EQ(folders.user().read("Pelora/scope/domain_binary.dat"), "\x02\0\0\0a\0\x01\0\0\0A"s);
    EXPECT_EQ(
        folders.allUsers().read("Pelora/scope/domain_binary.dat"), "\x02\0\0\0b\0\x01\0\0\0B"s);
}

TEST(BinaryPersistenceManagerDeathTest, WritingRequiresAStore)
{
    BinaryPersistenceManager manager(nullptr);

    EXPECT_CRASH_REPORT(
        manager.writeUnformattedParam("a", "A", 1),
        "REQUIRE VIOLATION : m_persistenceObject != NULL - In File : "
        "Compatibility/Persistence/src/BinaryPersistenceManager - At Line : <line>");
}

TEST(BinaryPersistenceManagerDeathTest, WritingRequiresAName)
{
    const PrivateDataFolders folders;
    BinaryPersistenceManager manager("scope", "domain", PERSISTENCE_CURRENT_USER);

    EXPECT_CRASH_REPORT(
        manager.writeUnformattedParam("", "A", 1),
        "REQUIRE VIOLATION : !name.empty() - In File : "
        "Compatibility/Persistence/src/BinaryPersistenceManager - At Line : <line>");
}

TEST(BinaryPersistenceManagerDeathTest, WritesNothingWithoutAStoreWhereViolationsAreBlocked)
{
    BinaryPersistenceManager manager(nullptr);

    EXPECT_CRASH_REPORT(
        writeWhileViolationsAreBlocked(manager, "a"),
        "not written\n"
        "REQUIRE VIOLATION : m_persistenceObject != NULL - In File : "
        "Compatibility/Persistence/src/BinaryPersistenceManager - At Line : <line>");
}

TEST(BinaryPersistenceManagerDeathTest, WritesNothingWithoutANameWhereViolationsAreBlocked)
{
    const PrivateDataFolders folders;
    BinaryPersistenceManager manager("scope", "domain", PERSISTENCE_CURRENT_USER);

    EXPECT_CRASH_REPORT(
        writeWhileViolationsAreBlocked(manager, ""),
        "not written\n"
        "REQUIRE VIOLATION : !name.empty() - In File : "
        "Compatibility/Persistence/src/BinaryPersistenceManager - At Line : <line>");
    EXPECT_EQ(folders.user().read("Pelora/scope/domain_binary.dat"), "");
}
