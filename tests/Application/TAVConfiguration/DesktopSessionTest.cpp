#include "DesktopSession.h"

#include "ScopedEnvironment.h"
#include "TemporaryFolder.h"
#include "VirtualDisplay.h"

#include <cstdlib>

#include <gtest/gtest.h>

namespace {

std::string variable(const char* name)
{
    const char* value = std::getenv(name);
    return value != nullptr ? value : "(unset)";
}

} // namespace

/// A process as an elevated one starts: no session bus, no accessibility bus, no display.
class DesktopSessionTest : public testing::Test {
protected:
    DesktopSessionTest()
    {
        for (const char* name :
             {"DBUS_SESSION_BUS_ADDRESS", "AT_SPI_BUS_ADDRESS", "XDG_RUNTIME_DIR"})
            unsetenv(name);
    }

    TemporaryFolder folder;
    // They put the former values back at the end of the test.
    ScopedEnvironment sessionBus{"DBUS_SESSION_BUS_ADDRESS", ""};
    ScopedEnvironment accessibilityBus{"AT_SPI_BUS_ADDRESS", ""};
    ScopedEnvironment runtimeFolder{"XDG_RUNTIME_DIR", ""};
    ScopedEnvironment display{"DISPLAY", ""};
};

TEST_F(DesktopSessionTest, LetsNoSessionBusBeStarted)
{
    DesktopSession::prepare();

    EXPECT_EQ(variable("DBUS_SESSION_BUS_ADDRESS"), "disabled:");
    EXPECT_EQ(variable("AT_SPI_BUS_ADDRESS"), "(unset)");
}

TEST_F(DesktopSessionTest, LetsNoSessionBusBeStartedWhereTheRuntimeFolderHasNone)
{
    setenv("XDG_RUNTIME_DIR", folder.path().c_str(), 1);

    DesktopSession::prepare();

    EXPECT_EQ(variable("DBUS_SESSION_BUS_ADDRESS"), "disabled:");
}

TEST_F(DesktopSessionTest, UsesTheBusOfTheRuntimeFolder)
{
    setenv("XDG_RUNTIME_DIR", folder.path().c_str(), 1);
    folder.write("bus", "");

    DesktopSession::prepare();

    EXPECT_EQ(variable("DBUS_SESSION_BUS_ADDRESS"), "unix:path=" + folder.file("bus"));
}

TEST_F(DesktopSessionTest, KeepsASessionBusThatIsKnown)
{
    const VirtualDisplay server;
    setenv("DISPLAY", server.name().c_str(), 1);
    VirtualDisplay::setRootProperty("AT_SPI_BUS", "unix:path=/a/bus");
    setenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/a/session", 1);

    DesktopSession::prepare();

    EXPECT_EQ(variable("DBUS_SESSION_BUS_ADDRESS"), "unix:path=/a/session");
    EXPECT_EQ(variable("AT_SPI_BUS_ADDRESS"), "(unset)");
}

TEST_F(DesktopSessionTest, JoinsTheAccessibilityBusThatTheDisplayNames)
{
    const VirtualDisplay server;
    setenv("DISPLAY", server.name().c_str(), 1);
    VirtualDisplay::setRootProperty("AT_SPI_BUS", "unix:path=/a/bus");

    DesktopSession::prepare();

    EXPECT_EQ(variable("AT_SPI_BUS_ADDRESS"), "unix:path=/a/bus");
}

TEST_F(DesktopSessionTest, KeepsAnAccessibilityBusThatIsKnown)
{
    const VirtualDisplay server;
    setenv("DISPLAY", server.name().c_str(), 1);
    VirtualDisplay::setRootProperty("AT_SPI_BUS", "unix:path=/a/bus");
    setenv("AT_SPI_BUS_ADDRESS", "unix:path=/another", 1);

    DesktopSession::prepare();

    EXPECT_EQ(variable("AT_SPI_BUS_ADDRESS"), "unix:path=/another");
}

TEST_F(DesktopSessionTest, JoinsNoAccessibilityBusWhereTheDisplayNamesNone)
{
    const VirtualDisplay server;
    setenv("DISPLAY", server.name().c_str(), 1);

    DesktopSession::prepare();

    EXPECT_EQ(variable("AT_SPI_BUS_ADDRESS"), "(unset)");
}
