#include "Allocations.h"
#include "AppDataManager.h"
#include "BinaryAppDataPersistence.h"
#include "ParameterRecords.h"
#include "PrivateDataFolders.h"

#include <functional>
#include <new>

#include <gtest/gtest.h>

using namespace std::string_literals;

namespace {

/// Whether the action has met the failing allocation, be it that an exception has told so or that a
/// service which never throws has kept it to itself.
bool runsOutOfMemory(int nthAllocation, const std::function<void()>& action)
{
    Allocations allocations;
    allocations.fail(nthAllocation);
    try {
        action();
    } catch (const std::bad_alloc&) {
    }
    return allocations.count() >= nthAllocation;
}

} // namespace

TEST(ParameterRecords, AllocateNothingForLengthsBeyondTheFile)
{
    const std::string record = "\x02\0\0\0a\0\x01\0\0\0A"s;
    const std::string longName = "\xFF\xFF\xFF\x7Fxx"s;
    const std::string longData = "\x02\0\0\0b\0\xFF\xFF\xFF\x7Fxx"s;
    const std::string negative = "\x02\0\0\0b\0\xFF\xFF\xFF\xFFxx"s;

    for (const std::string& lie : {longName, longData, negative}) {
        const std::string bytes = record + lie;
        const Allocations allocations;

        EXPECT_EQ(ParameterRecords::parse(bytes).size(), 1U);

        // One node of the map is all that a record as short as this one needs.
        EXPECT_LE(allocations.largest(), 256U);
        EXPECT_GT(allocations.largest(), 0U);
    }
}

TEST(BinaryAppDataPersistence, AllocatesNothingForTwoGigabytesInAFileOfTwentyBytes)
{
    const PrivateDataFolders folders;
    BinaryAppDataPersistence store("scope", "domain", PERSISTENCE_CURRENT_USER);
    const std::string content =
        "\x02\0\0\0a\0\xFF\xFF\xFF\x7F\x01\x02\x03\x04\x05\x06\x07\x08\x09\x0A"s;
    ASSERT_EQ(content.size(), 20U);
    folders.user().write("Pelora/scope/domain_binary.dat", content);
    const Allocations allocations;
    int size = 0;

    EXPECT_EQ(store.readUnformattedParam("a", size), nullptr);

    EXPECT_LE(allocations.largest(), 256U);
}

TEST(AppDataManager, HasBothStoresOfADomainWhereverItRanOutOfMemoryBefore)
{
    const PrivateDataFolders folders;
    AppDataManager& manager = *AppDataManager::getInstance();
    int failures = 0;
    bool failed = true;
    for (int nth = 1; failed; ++nth) {
        const std::string domain = "texts " + std::to_string(nth);
        failed = runsOutOfMemory(nth, [&] { manager.getPersistence(domain); });
        failures += failed ? 1 : 0;

        const auto& [user, allUsers] = manager.getPersistence(domain);

        EXPECT_NE(user, nullptr) << nth;
        EXPECT_NE(allUsers, nullptr) << nth;
    }
    EXPECT_GE(failures, 10) << "the two stores need more allocations than that";
}

TEST(AppDataManager, HasBothBinaryStoresOfADomainWhereverItRanOutOfMemoryBefore)
{
    const PrivateDataFolders folders;
    AppDataManager& manager = *AppDataManager::getInstance();
    int failures = 0;
    bool failed = true;
    for (int nth = 1; failed; ++nth) {
        const std::string domain = "bytes " + std::to_string(nth);
        failed = runsOutOfMemory(nth, [&] { manager.getBinaryPersistence(domain); });
        failures += failed ? 1 : 0;

        const auto& [user, allUsers] = manager.getBinaryPersistence(domain);

        EXPECT_NE(user, nullptr) << nth;
        EXPECT_NE(allUsers, nullptr) << nth;
    }
    EXPECT_GE(failures, 10) << "the two stores need more allocations than that";
}
