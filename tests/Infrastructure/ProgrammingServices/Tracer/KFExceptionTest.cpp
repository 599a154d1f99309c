#include "KFException.h"

#include <gtest/gtest.h>

TEST(KFException, ToStringNamesDescriptionFileAndLine)
{
    const KFException exception("BROKEN", "Some/Unit", 12);

    EXPECT_EQ(exception.toString(), "Exception : BROKEN on file Some/Unit line 12");
}

TEST(KFException, WhatIsTheDescriptionAlone)
{
    const KFException exception("BROKEN", "Some/Unit", 12);

    EXPECT_STREQ(exception.what(), "BROKEN");
    EXPECT_EQ(exception.getFileName(), "Some/Unit");
    EXPECT_EQ(exception.getLine(), 12);
}
