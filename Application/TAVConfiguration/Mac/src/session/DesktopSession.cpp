#include "DesktopSession.h"

#include "CallMarker.h"
#include "FileSystemManagement.h"
#include "XDisplay.h"

#include <cstdlib>
#include <string>

namespace {

/// The address of the bus that the login session's own folder holds; empty without one.
std::string userBus()
{
    CallMarker marker("userBus");
    const char* folder = std::getenv("XDG_RUNTIME_DIR");
    if (folder == nullptr || *folder == '\0')
        return {};
    const std::string socket = std::string(folder) + "/bus";
    return FileSystemManagement::existFile(socket) ? "unix:path=" + socket : std::string();
}

/// Other kinds of address start programs or read files, and several can stand behind each other.
bool isSocketAddress(const std::string& bus)
{
    return bus.starts_with("unix:") && bus.find(';') == std::string::npos;
}

/// The accessibility bus, as the desktop names it on its X display; empty without one. Any user of
/// the display can set the name.
std::string accessibilityBus()
{
    CallMarker marker("accessibilityBus");
    const XDisplay display;
    const std::string bus = display.isOpen() ? display.rootProperty("AT_SPI_BUS") : std::string();
    return isSocketAddress(bus) ? bus : std::string();
}

} // namespace

DesktopSession::Bus DesktopSession::prepare()
{
    CallMarker marker("DesktopSession::prepare");
    // The bus library takes an empty address for none.
    const char* const known = std::getenv("DBUS_SESSION_BUS_ADDRESS");
    if (known != nullptr && *known != '\0')
        return Bus::session;
    std::string address = userBus();
    Bus bus = Bus::session;
    if (address.empty()) {
        address = accessibilityBus();
        bus = Bus::accessibility;
    }
    if (address.empty()) {
        address = "disabled:"; // the bus library's own word for starting none
        bus = Bus::none;
    }
    setenv("DBUS_SESSION_BUS_ADDRESS", address.c_str(), 1);
    return bus;
}
