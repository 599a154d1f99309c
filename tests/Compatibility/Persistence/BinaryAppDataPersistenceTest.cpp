#include "BinaryAppDataPersistence.h"

#include "OwnedBytes.h"
#include "PrivateDataFolders.h"
#include "PublishedLogger.h"
#include "VirtualSlot.h"

#include <filesystem>
#include <optional>

#include <gtest/gtest.h>

namespace fs = std::filesystem;
using namespace std::string_literals;

namespace {

constexpr const char* FILE_NAME = "Pelora/scope/domain_binary.dat";

class BinaryAppDataPersistenceTest : public testing::Test {
protected:
    bool write(const std::string& name, const std::string& data)
    {
        return store.writeUnformattedParam(name, data.data(), static_cast<int>(data.size()));
    }
    std::optional<std::string> read(const std::string& name)
    {
        int size = -1;
        const OwnedBytes data(store.readUnformattedParam(name, size));
        if (data == nullptr) {
            EXPECT_EQ(size, -1) << "the size of what is missing";
            return std::nullopt;
        }
        return std::string(data.get(), static_cast<std::size_t>(size));
    }
    std::string content() const { return folders.user().read(FILE_NAME); }
    std::string path() const { return folders.user().file(FILE_NAME); }

    PrivateDataFolders folders;
    BinaryAppDataPersistence store{"scope", "domain", PERSISTENCE_CURRENT_USER};
};

} // namespace

TEST_F(BinaryAppDataPersistenceTest, FileIsTheDomainsInTheFolderOfTheScope)
{
    EXPECT_EQ(
        store.getPersistenceFilePath("a", "b", PERSISTENCE_CURRENT_USER),
        folders.user().path() + "/Pelora/a/b_binary.dat");
    EXPECT_EQ(
        store.getPersistenceFilePath("a", "b", PERSISTENCE_ALL_USERS),
        folders.allUsers().path() + "/Pelora/a/b_binary.dat");
}

TEST_F(BinaryAppDataPersistenceTest, ConstructionMakesTheFolderButNoFile)
{
    EXPECT_TRUE(fs::is_directory(folders.user().file("Pelora/scope")));
    EXPECT_TRUE(fs::is_empty(folders.user().file("Pelora/scope")));
}

TEST_F(BinaryAppDataPersistenceTest, ReadsNothingFromAMissingFile)
{
    t_BinaryParamMap parameters;

    EXPECT_EQ(read("a"), std::nullopt);
    EXPECT_FALSE(store.readPersistenceFile(parameters));
}

TEST_F(BinaryAppDataPersistenceTest, UnreadableFileEmptiesTheMap)
{
    t_BinaryParamMap parameters;
    parameters.emplace("a", t_Param("a", "x", 1));

    EXPECT_FALSE(store.readPersistenceFile(parameters));

    EXPECT_TRUE(parameters.empty());
}

TEST_F(BinaryAppDataPersistenceTest, EmptyFileIsReadAndHoldsNothing)
{
    folders.user().write(FILE_NAME, "");
    t_BinaryParamMap parameters;
    parameters.emplace("former", t_Param("former", "x", 1));
    const PublishedLogger log;

    EXPECT_TRUE(store.readPersistenceFile(parameters));
    EXPECT_TRUE(parameters.empty());
    EXPECT_EQ(read("a"), std::nullopt);
    EXPECT_TRUE(write("a", "A"));

    EXPECT_EQ(content(), "\x02\0\0\0a\0\x01\0\0\0A"s);
    EXPECT_EQ(log.lines(), "");
}

TEST_F(BinaryAppDataPersistenceTest, ReadsAndWritesItsWholeMap)
{
    const std::string bytes = "\x02\0\0\0a\0\x01\0\0\0A\x02\0\0\0b\0\x01\0\0\0B"s;
    folders.user().write(FILE_NAME, bytes);
    t_BinaryParamMap parameters;
    parameters.emplace("former", t_Param("former", "x", 1));

    EXPECT_TRUE(store.readPersistenceFile(parameters));

    EXPECT_EQ(ParameterRecords::toBytes(parameters), bytes);
    parameters.erase("a");
    EXPECT_TRUE(store.writePersistenceFile(parameters));
    EXPECT_EQ(content(), "\x02\0\0\0b\0\x01\0\0\0B"s);
}

TEST_F(BinaryAppDataPersistenceTest, WritesThirteenBytesForNameAAndThreeBytes)
{
    EXPECT_TRUE(write("a", "\x01\x02\x03"));

    EXPECT_EQ(content(), "\x02\0\0\0\x61\0\x03\0\0\0\x01\x02\x03"s);
}

TEST_F(BinaryAppDataPersistenceTest, WritesRecordsSortedByName)
{
    write("b", "B");
    write("a", "A");

    EXPECT_EQ(content(), "\x02\0\0\0a\0\x01\0\0\0A\x02\0\0\0b\0\x01\0\0\0B"s);
}

TEST_F(BinaryAppDataPersistenceTest, ReadsWhatItWrote)
{
    std::string everyByte;
    for (int byte = 0; byte < 256; ++byte)
        everyByte += static_cast<char>(byte);
    write("every byte", everyByte);
    write("na=me\n", "x");

    EXPECT_EQ(read("every byte"), everyByte);
    EXPECT_EQ(read("na=me\n"), "x");
    EXPECT_EQ(read("other"), std::nullopt);
}

TEST_F(BinaryAppDataPersistenceTest, ReplacesDataOfExistingName)
{
    write("a", "longer");
    write("a", "x");

    EXPECT_EQ(content(), "\x02\0\0\0a\0\x01\0\0\0x"s);
}

TEST_F(BinaryAppDataPersistenceTest, SizeZeroReadsBackAsABufferOfSizeZero)
{
    EXPECT_TRUE(store.writeUnformattedParam("name", nullptr, 0));

    EXPECT_EQ(fs::file_size(path()), 13U);
    int size = -1;
    const OwnedBytes data(store.readUnformattedParam("name", size));
    EXPECT_NE(data, nullptr);
    EXPECT_EQ(size, 0);
}

TEST_F(BinaryAppDataPersistenceTest, RefusesNegativeSizeAndNullDataOfAnotherSizeThanZero)
{
    write("a", "A");
    const std::string before = content();

    EXPECT_FALSE(store.writeUnformattedParam("a", "x", -1));
    EXPECT_FALSE(store.writeUnformattedParam("a", nullptr, 1));

    EXPECT_EQ(content(), before);
}

TEST_F(BinaryAppDataPersistenceTest, EachReadGivesANewBuffer)
{
    write("a", "A");
    int size = 0;

    const OwnedBytes first(store.readUnformattedParam("a", size));
    const OwnedBytes second(store.readUnformattedParam("a", size));

    EXPECT_NE(first.get(), second.get());
}

TEST_F(BinaryAppDataPersistenceTest, EraseLeavesAnEmptyFile)
{
    write("a", "A");

    store.eraseAllParams();

    ASSERT_TRUE(fs::exists(path()));
    EXPECT_EQ(fs::file_size(path()), 0U);
    EXPECT_EQ(read("a"), std::nullopt);
}

TEST_F(BinaryAppDataPersistenceTest, EraseMakesTheFile)
{
    store.eraseAllParams();

    ASSERT_TRUE(fs::exists(path()));
    EXPECT_EQ(fs::file_size(path()), 0U);
}

TEST_F(BinaryAppDataPersistenceTest, TruncatedRecordEndsReadingAndWritingKeepsThoseBefore)
{
    folders.user().write(FILE_NAME, "\x02\0\0\0a\0\x01\0\0\0A\x02\0\0\0b\0\x09\0\0\0B"s);

    EXPECT_EQ(read("a"), "A");
    EXPECT_EQ(read("b"), std::nullopt);

    EXPECT_TRUE(write("c", "C"));
    EXPECT_EQ(content(), "\x02\0\0\0a\0\x01\0\0\0A\x02\0\0\0c\0\x01\0\0\0C"s);
}

TEST_F(BinaryAppDataPersistenceTest, LogsWhatAWriteDropsBehindABrokenRecord)
{
    const std::string whole = "\x02\0\0\0a\0\x01\0\0\0A"s;
    const std::string broken = "\x02\0\0\0b\0\xFF\xFF\xFF\xFF"s;
    folders.user().write(FILE_NAME, whole + broken + whole);
    const PublishedLogger log;

    EXPECT_EQ(read("a"), "A");
    EXPECT_EQ(log.lines(), "") << "a read drops nothing";
    EXPECT_TRUE(write("a", "B"));
    EXPECT_TRUE(write("a", "C"));

    EXPECT_EQ(
        log.lines(),
        "[WARNING] Dropped the last 21 bytes of " + path() + ": A record was broken\n");
}

TEST_F(BinaryAppDataPersistenceTest, LogsNothingDroppedForANameThatStandsTwice)
{
    const std::string record = "\x02\0\0\0a\0\x01\0\0\0A"s;
    folders.user().write(FILE_NAME, record + record);
    const PublishedLogger log;

    EXPECT_TRUE(write("a", "A"));

    EXPECT_EQ(content(), record);
    EXPECT_EQ(log.lines(), "");
}

TEST(BinaryPersistence, SlotsFollowTheDestructorInTheirFixedOrder)
{
    EXPECT_EQ(virtualSlot(&BinaryPersistence::writeUnformattedParam), 2);
    EXPECT_EQ(virtualSlot(&BinaryPersistence::readUnformattedParam), 3);
    EXPECT_EQ(virtualSlot(&BinaryPersistence::eraseAllParams), 4);
    EXPECT_EQ(virtualSlot(&BinaryPersistence::getPersistenceFilePath), 5);
    EXPECT_EQ(virtualSlot(&BinaryPersistence::readPersistenceFile), 6);
    EXPECT_EQ(virtualSlot(&BinaryPersistence::writePersistenceFile), 7);
}
