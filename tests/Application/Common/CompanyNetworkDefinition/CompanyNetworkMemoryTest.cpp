#include "Allocations.h"
#include "CompanyNetworkFile.h"

#include <new>

// Only a file that cannot be opened and one that is no property list are no failures for the
// caller.
TEST_F(CompanyNetworkFile, WantOfMemoryForItsLastNetworkReachesTheCaller)
{
    folder.write(FILE_NAME, fileBegin + network("Company1", "one") + fileEnd);
    const auto allocationsOfReading = [this] {
        const Allocations allocations;
        EXPECT_FALSE(CompanyNetworkConfiguration(folder.path()).empty());
        return allocations.count();
    };
    ASSERT_EQ(allocationsOfReading(), allocationsOfReading()) << "not the same ones each time";
    const int last = allocationsOfReading();
    Allocations allocations;

    allocations.fail(last);

    EXPECT_THROW(CompanyNetworkConfiguration(folder.path()), std::bad_alloc);
}
