#include "PolkitAuthorizationServices.h"

#include "ChildProcess.h"
#include "OrdinaryUser.h"
#include "ScopedEnvironment.h"

#include <gtest/gtest.h>
#include <unistd.h>

namespace {

const AuthorizationRights ADMINISTRATOR{{"system.privilege.admin"}};
const AuthorizationRights ANOTHER{{"system.privilege.admin"}, {"another.right"}};

} // namespace

TEST(PolkitAuthorizationServices, HoldsTheRightExactlyWhenTheEffectiveUserIsRoot)
{
    PolkitAuthorizationServices services;

    EXPECT_EQ(
        services.AuthorizationCreate(&ADMINISTRATOR, AuthorizationFlag::DEFAULTS, nullptr),
        geteuid() == 0 ? AuthorizationStatus::success : AuthorizationStatus::denied);
}

TEST(PolkitAuthorizationServices, DoesNotHoldTheRightWhereTheRealUserAloneIsRoot)
{
    EXPECT_TRUE(inChildProcess([] {
        PolkitAuthorizationServices services;
        return (geteuid() != 0 || seteuid(NOBODY) == 0) &&
               services.AuthorizationCreate(&ADMINISTRATOR, AuthorizationFlag::DEFAULTS, nullptr) ==
                   AuthorizationStatus::denied;
    }));
}

TEST(PolkitAuthorizationServices, HandsOutAReferenceWithoutAGrant)
{
    PolkitAuthorizationServices services;
    std::unique_ptr<Authorization> authorization;

    EXPECT_EQ(
        services.AuthorizationCreate(nullptr, AuthorizationFlag::DEFAULTS, &authorization),
        AuthorizationStatus::success);

    ASSERT_NE(authorization, nullptr);
    EXPECT_EQ(authorization->keptGrant, "");
    EXPECT_EQ(
        services.AuthorizationFree(std::move(authorization), AuthorizationFlag::DEFAULTS),
        AuthorizationStatus::success);
}

TEST(PolkitAuthorizationServices, KnowsNoOtherRight)
{
    PolkitAuthorizationServices services;
    Authorization authorization;

    EXPECT_EQ(
        services.AuthorizationCreate(&ANOTHER, AuthorizationFlag::DEFAULTS, nullptr),
        AuthorizationStatus::denied);
    EXPECT_EQ(
        services.AuthorizationCopyRights(
            authorization, ANOTHER, AuthorizationFlag::INTERACTION_ALLOWED),
        AuthorizationStatus::denied);
}

TEST(PolkitAuthorizationServices, TellsOfAGrantThatCannotBeRevoked)
{
    const ScopedEnvironment noBus("DBUS_SYSTEM_BUS_ADDRESS", "unix:path=/missing/bus");
    PolkitAuthorizationServices services;
    auto authorization = std::make_unique<Authorization>(Authorization{"tmpauthz1"});

    EXPECT_EQ(
        services.AuthorizationFree(std::move(authorization), AuthorizationFlag::DEFAULTS),
        AuthorizationStatus::internal);
}
