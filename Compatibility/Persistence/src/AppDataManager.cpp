#include "AppDataManager.h"

#include "CallMarker.h"
#include "FileSystemManagement.h"

AppDataManager* AppDataManager::s_instance = nullptr;

AppDataManager::AppDataManager()
{
    CallMarker marker("AppDataManager", "AppDataManager::constructor", true, this);
}

AppDataManager* AppDataManager::getInstance()
{
    CallMarker marker("AppDataManager::getInstance");
    if (s_instance == nullptr)
        s_instance = new AppDataManager;
    return s_instance;
}

void AppDataManager::setGlobalScope(const std::string& scope)
{
    CallMarker marker("AppDataManager::setGlobalScope", this);
    m_globalScope = scope;
}

void AppDataManager::getDataPath(
    std::string& userPath, std::string& allUsersPath, const std::string& scope) const
{
    CallMarker marker("AppDataManager::getDataPath", this);
    const char separator = FileSystemManagement::getFolderSeparator();
    const std::string scopeFolder = separator + std::string("Pelora") + separator + scope;
    userPath = FileSystemManagement::getUserAppDataDirectory() + scopeFolder;
    allUsersPath = FileSystemManagement::getCommonAppDataDirectory() + scopeFolder;
}

std::string AppDataManager::getAllUsersDataPath() const
{
    CallMarker marker("AppDataManager::getAllUsersDataPath", this);
    std::string userPath;
    std::string allUsersPath;
    getDataPath(userPath, allUsersPath, m_globalScope);
    return allUsersPath + FileSystemManagement::getFolderSeparator();
}

std::string AppDataManager::getPathForFile(const std::string& domain, const std::string& file) const
{
    CallMarker marker("AppDataManager::getPathForFile", this);
    const char separator = FileSystemManagement::getFolderSeparator();
    std::string userPath;
    std::string allUsersPath;
    getDataPath(userPath, allUsersPath, m_globalScope);
    const std::string userFolder = userPath + separator + domain + separator;
    const std::string allUsersFolder = allUsersPath + separator + domain + separator;
    // The executable's folder comes with a separator of its own.
    const std::string executableFolder =
        FileSystemManagement::getCurrentExecutableDirectory() + domain + separator;

    for (const std::string* folder : {&userFolder, &allUsersFolder, &executableFolder}) {
        if (FileSystemManagement::existFile(*folder + file))
            return *folder;
    }
    return userFolder;
}
