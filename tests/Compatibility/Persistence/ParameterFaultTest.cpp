#include "AppDataPersistence.h"
#include "BinaryAppDataPersistence.h"
#include "PrivateDataFolders.h"
#include "SystemCallFaults.h"

#include <cerrno>

#include <gtest/gtest.h>

// A call that fails once, at any step, the first reading included, must not cost a parameter.

TEST(ParameterFaults, CostNoTextParameter)
{
    bool happened = true;
    for (int nth = 1; happened; ++nth) {
        SCOPED_TRACE(nth);
        const PrivateDataFolders folders;
        AppDataPersistence store("scope", "domain", PERSISTENCE_CURRENT_USER);
        folders.user().write("Pelora/scope/domain.dat", "a=1\n");
        SystemCallFaults faults;
        faults.failAny(EIO, nth);

        const bool written = store.writeParam("b", "2");

        happened = faults.counted() >= nth;
        EXPECT_EQ(written, !happened);
        EXPECT_EQ(folders.user().read("Pelora/scope/domain.dat"), written ? "a=1\nb=2\n" : "a=1\n");
    }
}

TEST(ParameterFaults, CostNoBinaryParameter)
{
    bool happened = true;
    for (int nth = 1; happened; ++nth) {
        SCOPED_TRACE(nth);
        const PrivateDataFolders folders;
        BinaryAppDataPersistence store("scope", "domain", PERSISTENCE_CURRENT_USER);
        store.writeUnformattedParam("a", "A", 1);
        const std::string before = folders.user().read("Pelora/scope/domain_binary.dat");
        SystemCallFaults faults;
        faults.failAny(EIO, nth);

        const bool written = store.writeUnformattedParam("b", "B", 1);

        happened = faults.counted() >= nth;
        EXPECT_EQ(written, !happened);
        const std::string after = folders.user().read("Pelora/scope/domain_binary.dat");
        EXPECT_EQ(after.substr(0, before.size()), before);
        EXPECT_EQ(after.size(), written ? 2 * before.size() : before.size());
    }
}
