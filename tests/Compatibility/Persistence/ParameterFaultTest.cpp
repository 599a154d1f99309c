#include "BothStores.h"
#include "PrivateDataFolders.h"
#include "PublishedLogger.h"
#include "SystemCallFaults.h"

#include <cerrno>
#include <filesystem>

#include <gtest/gtest.h>

namespace {

template<typename Store>
class ParameterFaults : public testing::Test {
};

TYPED_TEST_SUITE(ParameterFaults, BothStores, StoreNames);

/// How many system calls one more parameter takes, when none fails.
template<typename Store>
int countSteps()
{
    const PrivateDataFolders folders;
    Store store;
    store.write("a", "1");
    const SystemCallFaults faults;
    EXPECT_TRUE(store.write("b", "2"));
    return faults.counted();
}

} // namespace

// A call that fails once, at any step, the first reading included, must not cost a parameter.
TYPED_TEST(ParameterFaults, CostNoParameter)
{
    const std::string before = TypeParam::contentOf("a", "1");
    const std::string after = before + TypeParam::contentOf("b", "2");
    const int steps = countSteps<TypeParam>();
    constexpr int leastSteps = 12; // reading, then a new file's opening, writing, renaming, syncing
    ASSERT_GE(steps, leastSteps);

    for (int nth = 1; nth <= steps; ++nth) {
        SCOPED_TRACE(nth);
        const PrivateDataFolders folders;
        TypeParam store;
        folders.user().write(TypeParam::FILE_NAME, before);
        SystemCallFaults faults;
        faults.failAny(EIO, nth);

        EXPECT_FALSE(store.write("b", "2"));

        EXPECT_GE(faults.counted(), nth);
        EXPECT_EQ(folders.user().read(TypeParam::FILE_NAME), before);
    }
}

// What is missing when it is read, and there when it is written.
TYPED_TEST(ParameterFaults, LetAFileMadeMeanwhileNotFailTheFirstWrite)
{
    const PrivateDataFolders folders;
    TypeParam store;
    SystemCallFaults faults;
    faults.fail("openat", ENOENT);
    faults.interruptOpening(folders.user().file(TypeParam::FILE_NAME), [&folders] {
        folders.user().write(TypeParam::FILE_NAME, TypeParam::contentOf("a", "1"));
    });

    EXPECT_TRUE(store.write("b", "2"));

    EXPECT_EQ(folders.user().read(TypeParam::FILE_NAME), TypeParam::contentOf("b", "2"));
}

TEST(BrokenRecords, AreNotToldToBeDroppedByAWriteThatFails)
{
    const PrivateDataFolders folders;
    BinaryAppDataPersistence store("scope", "domain", PERSISTENCE_CURRENT_USER);
    folders.user().write(ByteStore::FILE_NAME, "broken");
    const PublishedLogger log;
    SystemCallFaults faults;
    faults.fail("renameat", EIO);

    EXPECT_FALSE(store.writeUnformattedParam("a", "A", 1));

    EXPECT_EQ(folders.user().read(ByteStore::FILE_NAME), "broken");
    EXPECT_EQ(
        log.lines(), "[ERROR  ] Cannot write the parameters to " +
                         folders.user().file(ByteStore::FILE_NAME) +
                         ": renaming the file: Input/output error\n");
}
