#include "ElevatedDisplay.h"

#include "BrokenPipeGuard.h"
#include "CallMarker.h"
#include "ElevatedEnvironment.h"
#include "XDisplay.h"

#include <cstdlib>

namespace {

std::string variable(const char* name)
{
    CallMarker marker("variable");
    const char* value = std::getenv(name);
    return value != nullptr ? value : "";
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
    if (!ElevatedEnvironment::mayHold("DISPLAY", name))
        return "the window needs a display, and pkexec does not hand on " + name;
    const std::string cookies = variable("XAUTHORITY");
    if (!ElevatedEnvironment::mayHold("XAUTHORITY", cookies))
        return "the window needs a display, and pkexec does not hand on its cookies, " + cookies;
    // The library that connects tells a refusal on the standard error, too.
    const BrokenPipeGuard nobodyReads;
    const XDisplay display;
    if (!display.isOpen())
        return "the window needs a display, and " + name + " cannot be opened";
    if (!display.admitsRoot() && !display.hasCookie())
        return "the window needs a display, and " + name + " does not admit root";
    return {};
}
