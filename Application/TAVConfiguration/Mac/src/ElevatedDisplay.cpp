#include "ElevatedDisplay.h"

#include "CallMarker.h"
#include "XDisplay.h"

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string_view>

#include <X11/Xauth.h>

namespace {

std::string variable(const char* name)
{
    const char* value = std::getenv(name);
    return value != nullptr ? value : "";
}

/// "0" of ":0", "host:0" and ":0.1".
std::string numberOf(const std::string& display)
{
    const std::string behindHost = display.substr(display.rfind(':') + 1);
    return behindHost.substr(0, behindHost.find('.'));
}

/// Whether the user's cookie file, which root can read, has a cookie for the display.
bool hasCookie(const std::string& display)
{
    const char* name = XauFileName();
    std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(
        name != nullptr ? std::fopen(name, "r") : nullptr, &std::fclose);
    const std::string number = numberOf(display);
    bool found = false;
    while (file != nullptr && !found) {
        const std::unique_ptr<Xauth, void (*)(Xauth*)> entry(
            XauReadAuth(file.get()), &XauDisposeAuth);
        if (entry == nullptr)
            break;
        const std::string_view entryNumber(entry->number, entry->number_length);
        found = entryNumber.empty() || entryNumber == number;
    }
    return found;
}

} // namespace

std::string ElevatedDisplay::obstacle()
{
    CallMarker marker("ElevatedDisplay::obstacle");
    const std::string name = variable("DISPLAY");
    if (name.empty() && !variable("WAYLAND_DISPLAY").empty())
        return "the window needs an X display, and this Wayland session has none";
    if (name.empty())
        return "the window needs a display, and DISPLAY is not set";
    const XDisplay display;
    if (!display.isOpen())
        return "the window needs a display, and " + name + " cannot be opened";
    if (!display.admitsRoot() && !hasCookie(name))
        return "the window needs a display, and " + name + " does not admit root";
    return {};
}
