#include "AppDataManager.h"

#include "CallMarker.h"
#include "DataFolder.h"
#include "FileSystemManagement.h"
#include "FolderNames.h"
#include "PatternFileFinder.h"

#include <set>
#include <utility>

AppDataManager* AppDataManager::s_instance = nullptr;

namespace {

/// The stores of the domain, made when they are not there yet: both or none.
template<typename Manager>
const t_PersistencePair<Manager>& findOrMake(
    std::map<std::string, t_PersistencePair<Manager>>& stores, const std::string& scope,
    const std::string& domain)
{
    CallMarker marker("findOrMake");
    if (const auto found = stores.find(domain); found != stores.end())
        return found->second;
    t_PersistencePair<Manager> pair = {
        std::make_unique<Manager>(scope, domain, PERSISTENCE_CURRENT_USER),
        std::make_unique<Manager>(scope, domain, PERSISTENCE_ALL_USERS)};
    return stores.emplace(domain, std::move(pair)).first->second;
}

void addFiles(const std::string& folder, std::set<std::string>& names)
{
    CallMarker marker("addFiles");
    PatternFileFinder finder(folder, "*.*");
    std::string name;
    for (bool found = finder.findFirstFile(name); found; found = finder.findNextFile(name))
        names.insert(name);
}

void deleteIfThere(const std::string& folder)
{
    CallMarker marker("deleteIfThere");
    if (FileSystemManagement::existFolder(folder))
        FileSystemManagement::deleteFolder(folder, true);
}

} // namespace

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
    userPath = DataFolder::getPath(scope, PERSISTENCE_CURRENT_USER);
    allUsersPath = DataFolder::getPath(scope, PERSISTENCE_ALL_USERS);
}

std::string AppDataManager::getAllUsersDataPath() const
{
    CallMarker marker("AppDataManager::getAllUsersDataPath", this);
    std::string userPath;
    std::string allUsersPath;
    getDataPath(userPath, allUsersPath, m_globalScope);
    return allUsersPath + FileSystemManagement::getFolderSeparator();
}

std::array<std::string, 2> AppDataManager::getDomainFolders(const std::string& domain) const
{
    CallMarker marker("AppDataManager::getDomainFolders", this);
    const char separator = FileSystemManagement::getFolderSeparator();
    std::string userPath;
    std::string allUsersPath;
    getDataPath(userPath, allUsersPath, m_globalScope);
    const std::string folder = separator + domain + separator;
    return {userPath + folder, allUsersPath + folder};
}

std::string AppDataManager::getPathForFile(const std::string& domain, const std::string& file) const
{
    CallMarker marker("AppDataManager::getPathForFile", this);
    const auto [user, allUsers] = getDomainFolders(domain);
    // The executable's folder comes with a separator of its own.
    const std::string besideExecutable = FileSystemManagement::getCurrentExecutableDirectory() +
                                         domain + FileSystemManagement::getFolderSeparator();
    for (const std::string& folder : {user, allUsers, besideExecutable}) {
        if (FileSystemManagement::existFile(folder + file))
            return folder;
    }
    return user;
}

void AppDataManager::createAllUsersDataFolder() const
{
    CallMarker marker("AppDataManager::createAllUsersDataFolder", this);
    DataFolder::create(m_globalScope, PERSISTENCE_ALL_USERS);
}

std::list<std::string> AppDataManager::getFiles(const std::string& domain) const
{
    CallMarker marker("AppDataManager::getFiles", this);
    std::set<std::string> names;
    for (const std::string& folder : getDomainFolders(domain))
        addFiles(folder, names);
    return {names.begin(), names.end()};
}

const t_PersistencePair<PersistenceManager>& AppDataManager::getPersistence(
    const std::string& domain) const
{
    CallMarker marker("AppDataManager::getPersistence", this);
    return findOrMake(m_persistence, m_globalScope, domain);
}

const t_PersistencePair<BinaryPersistenceManager>& AppDataManager::getBinaryPersistence(
    const std::string& domain) const
{
    CallMarker marker("AppDataManager::getBinaryPersistence", this);
    return findOrMake(m_binaryPersistence, m_globalScope, domain);
}

bool AppDataManager::readParam(
    const std::string& domain, const std::string& name, std::string& value) const
{
    CallMarker marker("AppDataManager::readParam", this);
    const auto& [user, allUsers] = getPersistence(domain);
    return user->readParam(name, value) || allUsers->readParam(name, value);
}

bool AppDataManager::writeParam(
    const std::string& domain, const std::string& name, const std::string& value) const
{
    CallMarker marker("AppDataManager::writeParam", this);
    return getPersistence(domain).first->writeParam(name, value);
}

bool AppDataManager::writeParamForAllUsers(
    const std::string& domain, const std::string& name, const std::string& value) const
{
    CallMarker marker("AppDataManager::writeParamForAllUsers", this);
    return getPersistence(domain).second->writeParam(name, value);
}

char* AppDataManager::readUnformattedParam(
    const std::string& domain, const std::string& name, int& size) const
{
    CallMarker marker("AppDataManager::readUnformattedParam", this);
    const auto& [user, allUsers] = getBinaryPersistence(domain);
    char* const data = user->readUnformattedParam(name, size);
    return data != nullptr ? data : allUsers->readUnformattedParam(name, size);
}

bool AppDataManager::writeUnformattedParam(
    const std::string& domain, const std::string& name, const char* data, int size) const
{
    CallMarker marker("AppDataManager::writeUnformattedParam", this);
    return getBinaryPersistence(domain).first->writeUnformattedParam(name, data, size);
}

bool AppDataManager::writeUnformattedParamForAllUsers(
    const std::string& domain, const std::string& name, const char* data, int size) const
{
    CallMarker marker("AppDataManager::writeUnformattedParamForAllUsers", this);
    return getBinaryPersistence(domain).second->writeUnformattedParam(name, data, size);
}

void AppDataManager::removeDomainData(const std::string& domain) const
{
    CallMarker marker("AppDataManager::removeDomainData", this);
    const auto& texts = getPersistence(domain);
    texts.first->eraseAllParams();
    texts.second->eraseAllParams();
    const auto& bytes = getBinaryPersistence(domain);
    bytes.first->eraseAllParams();
    bytes.second->eraseAllParams();
}

void AppDataManager::removeAllData(const std::string& scope) const
{
    CallMarker marker("AppDataManager::removeAllData", this);
    std::string userPath;
    std::string allUsersPath;
    for (const std::string& folder : {scope, std::string(FOLDERNAME_DOWNLOADS)}) {
        getDataPath(userPath, allUsersPath, folder);
        deleteIfThere(userPath);
        deleteIfThere(allUsersPath);
    }
    getDataPath(userPath, allUsersPath, "");
    FileSystemManagement::DeleteEmptyFolder(userPath);
    FileSystemManagement::DeleteEmptyFolder(allUsersPath);
}
