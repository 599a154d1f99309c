#include "AppData.h"

#include "AppDataManager.h"
#include "CallMarker.h"

AppData::AppData(const std::string& domain) : m_domain(domain)
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

std::string AppData::getAllUsersDataPath() const
{
    CallMarker marker("AppData::getAllUsersDataPath", this);
    return AppDataManager::getInstance()->getAllUsersDataPath();
}

std::string AppData::getPathForFile(const std::string& file) const
{
    CallMarker marker("AppData::getPathForFile", this);
    return AppDataManager::getInstance()->getPathForFile(m_domain, file);
}
