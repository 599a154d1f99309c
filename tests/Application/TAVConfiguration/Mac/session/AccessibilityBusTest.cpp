#include "AccessibilityBus.h"

#include "ScopedEnvironment.h"

#include <cstdlib>
#include <optional>
#include <string>

#include <gtest/gtest.h>
#include <unistd.h>

TEST(AccessibilityBus, SwitchesAccessibilityOnWhereItIsAnnounced)
{
    const ScopedEnvironment unset("QT_LINUX_ACCESSIBILITY_ALWAYS_ON", std::nullopt);

    EXPECT_EXIT(
        {
            AccessibilityBus::announce();
            const char* const value = std::getenv("QT_LINUX_ACCESSIBILITY_ALWAYS_ON");
            _exit(value != nullptr && std::string(value) == "1" ? 7 : 8);
        },
        testing::ExitedWithCode(7), "");
}

TEST(AccessibilityBus, TellsTheAddressOfTheSessionBus)
{
    const ScopedEnvironment bus("DBUS_SESSION_BUS_ADDRESS", "unix:path=/a/bus");

    EXPECT_EQ(AccessibilityBus(nullptr).GetAddress(), "unix:path=/a/bus");
}
