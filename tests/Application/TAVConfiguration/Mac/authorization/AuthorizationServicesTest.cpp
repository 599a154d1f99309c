#include "AuthorizationServices.h"

#include <gtest/gtest.h>

TEST(AuthorizationServices, HasTheStatusesThatTracesShow)
{
    EXPECT_EQ(static_cast<int>(AuthorizationStatus::success), 0);
    EXPECT_EQ(static_cast<int>(AuthorizationStatus::denied), -60005);
    EXPECT_EQ(static_cast<int>(AuthorizationStatus::canceled), -60006);
    EXPECT_EQ(static_cast<int>(AuthorizationStatus::interactionNotAllowed), -60007);
    EXPECT_EQ(static_cast<int>(AuthorizationStatus::internal), -60008);
    EXPECT_EQ(static_cast<int>(AuthorizationStatus::toolExecuteFailure), -60031);
}

TEST(AuthorizationServices, HasTheFlagsThatCallersCombine)
{
    EXPECT_EQ(AuthorizationFlag::DEFAULTS, 0U);
    EXPECT_EQ(AuthorizationFlag::INTERACTION_ALLOWED, 1U);
    EXPECT_EQ(AuthorizationFlag::EXTEND_RIGHTS, 2U);
    EXPECT_EQ(AuthorizationFlag::PREAUTHORIZE, 16U);
}

TEST(AuthorizationServices, AskForTheRightOfAdministratorsWithoutFlags)
{
    EXPECT_STREQ(ADMINISTRATOR_RIGHT, "system.privilege.admin");
    EXPECT_EQ(AuthorizationRight{}.flags, AuthorizationFlag::DEFAULTS);
}
