#include "DesktopSession.h"

#include "CallMarker.h"
#include "FileSystemManagement.h"
#include "XDisplay.h"

#include <cstdlib>
#include <string>

namespace {

constexpr int KEEP_WHAT_IS_SET = 0;

/// The address of the bus that the login session's own folder holds; empty without one.
std::string userBus()
{
    const char* folder = std::getenv("XDG_RUNTIME_DIR");
    const std::string socket = std::string(folder != nullptr ? folder : "") + "/bus";
    return FileSystemManagement::existFile(socket) ? "unix:path=" + socket : std::string();
}

/// Screen readers are reached over the bus that the desktop names on its X display: an elevated
/// process gets no other word of it.
void joinAccessibilityBus()
{
    const XDisplay display;
    const std::string bus = display.isOpen() ? display.rootProperty("AT_SPI_BUS") : std::string();
    if (!bus.empty())
        setenv("AT_SPI_BUS_ADDRESS", bus.c_str(), KEEP_WHAT_IS_SET);
}

} // namespace

void DesktopSession::prepare()
{
    CallMarker marker("DesktopSession::prepare");
    if (std::getenv("DBUS_SESSION_BUS_ADDRESS") != nullptr)
        return;
    const std::string bus = userBus();
    // "disabled:" is the bus library's own word for starting none.
    setenv("DBUS_SESSION_BUS_ADDRESS", bus.empty() ? "disabled:" : bus.c_str(), KEEP_WHAT_IS_SET);
    if (bus.empty())
        joinAccessibilityBus();
}
