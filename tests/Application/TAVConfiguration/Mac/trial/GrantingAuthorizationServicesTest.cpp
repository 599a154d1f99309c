#include "GrantingAuthorizationServices.h"

#include <array>

#include <gtest/gtest.h>
#include <sys/wait.h>

TEST(GrantingAuthorizationServices, HoldsEveryRight)
{
    GrantingAuthorizationServices services;
    const AuthorizationRights rights{{"system.privilege.admin"}};

    EXPECT_EQ(
        services.AuthorizationCreate(&rights, AuthorizationFlag::DEFAULTS, nullptr),
        AuthorizationStatus::success);
}

TEST(GrantingAuthorizationServices, RelaunchesDirectly)
{
    GrantingAuthorizationServices services;
    std::unique_ptr<Authorization> authorization;
    std::FILE* output = nullptr;

    services.AuthorizationCreate(nullptr, AuthorizationFlag::DEFAULTS, &authorization);
    ASSERT_NE(authorization, nullptr);
    EXPECT_EQ(
        services.AuthorizationCopyRights(
            *authorization, {{"system.privilege.admin"}}, AuthorizationFlag::DEFAULTS),
        AuthorizationStatus::success);
    const std::array<const char*, 2> arguments{"--adminRights", nullptr};
    EXPECT_EQ(
        services.AuthorizationExecuteWithPrivileges(
            *authorization, "/bin/echo", AuthorizationFlag::DEFAULTS, arguments.data(), &output),
        AuthorizationStatus::success);
    EXPECT_EQ(
        services.AuthorizationFree(std::move(authorization), AuthorizationFlag::DEFAULTS),
        AuthorizationStatus::success);

    std::array<char, 64> line{};
    EXPECT_STREQ(std::fgets(line.data(), line.size(), output), "--adminRights\n");
    std::fclose(output);
    waitpid(-1, nullptr, 0);
}
