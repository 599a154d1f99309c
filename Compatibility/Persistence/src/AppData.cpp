#include "AppData.h"

#include "AppDataManager.h"
#include "CallMarker.h"

#include <utility>

AppData::AppData(std::string domain) : m_domain(std::move(domain))
{
    CallMarker marker("AppData", "AppData::constructor", true, this);
}

AppData::~AppData()
{
    CallMarker marker("AppData", "AppData::destructor", false, this);
}

void AppData::setGlobalScope(const std::string& scope)
{
    CallMarker marker("AppData::setGlobalScope");
    AppDataManager::getInstance()->setGlobalScope(scope);
}

void AppData::removeAllData(const std::string& scope)
{
    CallMarker marker("AppData::removeAllData");
    AppDataManager::getInstance()->removeAllData(scope);
}

std::string AppData::getAllUsersDataPath() const
{
    CallMarker marker("AppData::getAllUsersDataPath", this);
    return AppDataManager::getInstance()->getAllUsersDataPath();
}

void AppData::createAllUsersDataFolder() const
{
    CallMarker marker("AppData::createAllUsersDataFolder", this);
    AppDataManager::getInstance()->createAllUsersDataFolder();
}

std::string AppData::getPathForFile(const std::string& file) const
{
    CallMarker marker("AppData::getPathForFile", this);
    return AppDataManager::getInstance()->getPathForFile(m_domain, file);
}

std::list<std::string> AppData::getFiles() const
{
    CallMarker marker("AppData::getFiles", this);
    return AppDataManager::getInstance()->getFiles(m_domain);
}

bool AppData::readParam(const std::string& name, std::string& value) const
{
    CallMarker marker("AppData::readParam", this);
    return AppDataManager::getInstance()->readParam(m_domain, name, value);
}

bool AppData::writeParam(const std::string& name, const std::string& value) const
{
    CallMarker marker("AppData::writeParam", this);
    return AppDataManager::getInstance()->writeParam(m_domain, name, value);
}

bool AppData::writeParamForAllUsers(const std::string& name, const std::string& value) const
{
    CallMarker marker("AppData::writeParamForAllUsers", this);
    return AppDataManager::getInstance()->writeParamForAllUsers(m_domain, name, value);
}

char* AppData::readUnformattedParam(const std::string& name, int& size) const
{
    CallMarker marker("AppData::readUnformattedParam", this);
    return AppDataManager::getInstance()->readUnformattedParam(m_domain, name, size);
}

bool AppData::writeUnformattedParam(const std::string& name, const char* data, int size) const
{
    CallMarker marker("AppData::writeUnformattedParam", this);
    return AppDataManager::getInstance()->writeUnformattedParam(m_domain, name, data, size);
}

bool AppData::writeUnformattedParamForAllUsers(
    const std::string& name, const char* data, int size) const
{
    CallMarker marker("AppData::writeUnformattedParamForAllUsers", this);
    return AppDataManager::getInstance()->writeUnformattedParamForAllUsers(
        m_domain, name, data, size);
}

void AppData::removeData() const
{
    CallMarker marker("AppData::removeData", this);
    AppDataManager::getInstance()->removeDomainData(m_domain);
}
