#include "OSManagement.h"

#include "SystemFacts.h"

#include <exception>

namespace {

std::string versionText()
{
    const auto [major, minor, bugFix] = SystemFacts::version();
    return std::to_string(major) + "." + std::to_string(minor) + "." + std::to_string(bugFix);
}

} // namespace

std::string OSManagement::getCurrentOS()
try {
    return gsc_MacOsX + (" " + versionText()) + " ";
} catch (const std::exception&) {
    return {};
}

void OSManagement::getCurrentOS(std::string& name, std::string& version)
try {
    name = gsc_MacOsX;
    version = versionText();
} catch (const std::exception&) {
    name.clear();
    version.clear();
}

std::string OSManagement::getFullOSDescription()
try {
    return gsc_MacOsX + ("_" + versionText());
} catch (const std::exception&) {
    return {};
}

std::string OSManagement::getUserUILanguage()
try {
    return SystemFacts::preferredLanguage().substr(0, 2);
} catch (const std::exception&) {
    return {};
}
