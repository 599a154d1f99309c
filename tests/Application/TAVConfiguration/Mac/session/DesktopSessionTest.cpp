#include "DesktopSession.h"

#include "ScopedEnvironment.h"
#include "TemporaryFolder.h"
#include "VirtualDisplay.h"

#include <cstdlib>
#include <string>

#include <gtest/gtest.h>

namespace {

std::string variable(const char* name)
{
    const char* value = std::getenv(name);
    return value != nullptr ? value : "(unset)";
}

} // namespace

using Bus = DesktopSession::Bus;

/// A process as an elevated one starts: no session bus, no display.
class DesktopSessionTest : public testing::Test {
protected:
    DesktopSessionTest()
    {
        unsetenv("DBUS_SESSION_BUS_ADDRESS");
        unsetenv("XDG_RUNTIME_DIR");
    }

    TemporaryFolder folder;
    // They put the former values back at the end of the test.
    ScopedEnvironment sessionBus{"DBUS_SESSION_BUS_ADDRESS", ""};
    ScopedEnvironment runtimeFolder{"XDG_RUNTIME_DIR", ""};
    ScopedEnvironment display{"DISPLAY", ""};
};

/// A display of the test's own, whose root window may name an accessibility bus.
class DesktopSessionDisplayTest : public DesktopSessionTest {
protected:
    DesktopSessionDisplayTest() { setenv("DISPLAY", server.name().c_str(), 1); }

    VirtualDisplay server;
};

TEST_F(DesktopSessionTest, LetsNoSessionBusBeStarted)
{
    EXPECT_EQ(DesktopSession::prepare(), Bus::none);

    EXPECT_EQ(variable("DBUS_SESSION_BUS_ADDRESS"), "disabled:");
}

TEST_F(DesktopSessionTest, TakesAnEmptyAddressForNone)
{
    setenv("DBUS_SESSION_BUS_ADDRESS", "", 1);

    EXPECT_EQ(DesktopSession::prepare(), Bus::none);

    EXPECT_EQ(variable("DBUS_SESSION_BUS_ADDRESS"), "disabled:");
}

TEST_F(DesktopSessionTest, LetsNoSessionBusBeStartedWhereTheRuntimeFolderHasNone)
{
    setenv("XDG_RUNTIME_DIR", folder.path().c_str(), 1);

    EXPECT_EQ(DesktopSession::prepare(), Bus::none);

    EXPECT_EQ(variable("DBUS_SESSION_BUS_ADDRESS"), "disabled:");
}

TEST_F(DesktopSessionTest, UsesTheBusOfTheRuntimeFolder)
{
    setenv("XDG_RUNTIME_DIR", folder.path().c_str(), 1);
    folder.write("bus", "");

    EXPECT_EQ(DesktopSession::prepare(), Bus::session);

    EXPECT_EQ(variable("DBUS_SESSION_BUS_ADDRESS"), "unix:path=" + folder.file("bus"));
}

TEST_F(DesktopSessionDisplayTest, KeepsASessionBusThatIsKnown)
{
    VirtualDisplay::setRootProperty("AT_SPI_BUS", "unix:path=/a/bus");
    setenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/a/session", 1);

    EXPECT_EQ(DesktopSession::prepare(), Bus::session);

    EXPECT_EQ(variable("DBUS_SESSION_BUS_ADDRESS"), "unix:path=/a/session");
}

TEST_F(DesktopSessionDisplayTest, UsesTheAccessibilityBusThatTheDisplayNames)
{
    VirtualDisplay::setRootProperty("AT_SPI_BUS", "unix:path=/a/bus,guid=1");

    EXPECT_EQ(DesktopSession::prepare(), Bus::accessibility);

    EXPECT_EQ(variable("DBUS_SESSION_BUS_ADDRESS"), "unix:path=/a/bus,guid=1");
}

TEST_F(DesktopSessionDisplayTest, ReadsNoMoreOfAnAddressThan4096Bytes)
{
    const std::string address = "unix:path=/" + std::string(5000, 'x');
    VirtualDisplay::setRootProperty("AT_SPI_BUS", address);

    EXPECT_EQ(DesktopSession::prepare(), Bus::accessibility);

    EXPECT_EQ(variable("DBUS_SESSION_BUS_ADDRESS"), address.substr(0, 4096));
}

TEST_F(DesktopSessionDisplayTest, HasNoBusWhereTheDisplayNamesNone)
{
    EXPECT_EQ(DesktopSession::prepare(), Bus::none);

    EXPECT_EQ(variable("DBUS_SESSION_BUS_ADDRESS"), "disabled:");
}

class DesktopSessionAddressTest : public DesktopSessionDisplayTest,
                                  public testing::WithParamInterface<const char*> {};

TEST_P(DesktopSessionAddressTest, UsesNoAddressThatIsMoreThanASocket)
{
    VirtualDisplay::setRootProperty("AT_SPI_BUS", GetParam());

    EXPECT_EQ(DesktopSession::prepare(), Bus::none);

    EXPECT_EQ(variable("DBUS_SESSION_BUS_ADDRESS"), "disabled:");
}

INSTANTIATE_TEST_SUITE_P(
    Addresses, DesktopSessionAddressTest,
    testing::Values(
        "unixexec:path=/bin/sh", "autolaunch:", "nonce-tcp:noncefile=/etc/shadow",
        "unix:path=/a/bus;unixexec:path=/bin/sh", ""));
