#include "KFCompanyNetworkNotFoundException.h"

#include <gtest/gtest.h>

TEST(KFCompanyNetworkNotFoundException, SaysThatTheCompanyIsNotFound)
{
    const KFCompanyNetworkNotFoundException exception("Some/Unit", 12);

    EXPECT_STREQ(exception.what(), "COMPANY_NOT_FOUND");
    EXPECT_EQ(exception.getFileName(), "Some/Unit");
    EXPECT_EQ(exception.getLine(), 12);
}

TEST(KFCompanyNetworkNotFoundException, ToStringHasItsOwnWording)
{
    const KFCompanyNetworkNotFoundException exception("Some/Unit", 12);

    EXPECT_EQ(
        exception.toString(),
        "Company Network Not Found Exception : COMPANY_NOT_FOUND on file Some/Unit at line 12");
}

TEST(KFCompanyNetworkNotFoundException, IsCaughtAsKFException)
{
    const auto raise = [] { throw KFCompanyNetworkNotFoundException("Some/Unit", 12); };

    EXPECT_THROW(raise(), KFException);
}
