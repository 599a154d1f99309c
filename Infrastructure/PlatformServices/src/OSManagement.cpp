#include "OSManagement.h"

#include "SystemFacts.h"

std::string OSManagement::getCurrentOS()
{
    std::string name;
    std::string version;
    getCurrentOS(name, version);
    return name + " " + version + " ";
}

void OSManagement::getCurrentOS(std::string& name, std::string& version)
{
    const auto [major, minor, bugFix] = SystemFacts::version();
    name = gsc_MacOsX;
    version = std::to_string(major) + "." + std::to_string(minor) + "." + std::to_string(bugFix);
}

std::string OSManagement::getFullOSDescription()
{
    std::string name;
    std::string version;
    getCurrentOS(name, version);
    return name + "_" + version;
}

std::string OSManagement::getUserUILanguage()
{
    return SystemFacts::preferredLanguage().substr(0, 2);
}
