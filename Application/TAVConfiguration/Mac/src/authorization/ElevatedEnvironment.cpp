#include "ElevatedEnvironment.h"

#include "CallMarker.h"

#include <array>
#include <cstdlib>

namespace {

constexpr std::array DISPENSABLE{"LANG",     "LINGUAS",     "LANGUAGE",    "LC_COLLATE",
                                 "LC_CTYPE", "LC_MESSAGES", "LC_MONETARY", "LC_NUMERIC",
                                 "LC_TIME",  "LC_ALL",      "TERM",        "COLORTERM"};

bool contains(const std::string& value, const char* text)
{
    return value.find(text) != std::string::npos;
}

} // namespace

bool ElevatedEnvironment::mayHold(const std::string& name, const std::string& value)
{
    CallMarker marker("ElevatedEnvironment::mayHold");
    if (contains(value, "%") || contains(value, ".."))
        return false;
    if (name == "XAUTHORITY")
        return value.empty() || value.front() == '/';
    return !contains(value, "/");
}

std::vector<std::string> ElevatedEnvironment::dispensable()
{
    CallMarker marker("ElevatedEnvironment::dispensable");
    std::vector<std::string> names;
    for (const char* const name : DISPENSABLE) {
        const char* const value = std::getenv(name);
        if (value != nullptr && !mayHold(name, value))
            names.emplace_back(name);
    }
    return names;
}
