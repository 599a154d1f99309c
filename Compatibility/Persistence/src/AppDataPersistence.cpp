#include "AppDataPersistence.h"

#include "CallMarker.h"
#include "DataFolder.h"
#include "FileSystemManagement.h"
#include "ParameterFile.h"
#include "ParameterText.h"
#include "SafeFile.h"

AppDataPersistence::AppDataPersistence(
    const std::string& scope, const std::string& domain, t_PersistenceMode mode)
    : m_filePath(getPersistenceFilePath(scope, domain, mode))
{
    CallMarker marker("AppDataPersistence", "AppDataPersistence::constructor", true, this);
}

AppDataPersistence::~AppDataPersistence()
{
    CallMarker marker("AppDataPersistence", "AppDataPersistence::destructor", false, this);
}

bool AppDataPersistence::writeParam(const std::string& name, const std::string& value)
{
    CallMarker marker("AppDataPersistence::writeParam", this);
    if (!ParameterText::isStorable(name, value))
        return false;
    ParameterText text;
    if (!readPersistenceFile(text) && FileSystemManagement::existFile(m_filePath))
        return false;
    text.parameters[name] = value;
    return writePersistenceFile(text);
}

bool AppDataPersistence::readParam(const std::string& name, std::string& value)
{
    CallMarker marker("AppDataPersistence::readParam", this);
    ParameterText text;
    readPersistenceFile(text);
    const auto found = text.parameters.find(name);
    if (found == text.parameters.end()) {
        TAV_TRACE(marker, TraceMsgType::D, "Parameter '%s' not found", name.c_str());
        return false;
    }
    value = found->second;
    return true;
}

void AppDataPersistence::eraseAllParams()
{
    CallMarker marker("AppDataPersistence::eraseAllParams", this);
    if (FileSystemManagement::existFile(m_filePath))
        writePersistenceFile({});
}

std::string AppDataPersistence::getPersistenceFilePath(
    const std::string& scope, const std::string& domain, t_PersistenceMode mode)
{
    CallMarker marker("AppDataPersistence::getPersistenceFilePath");
    return DataFolder::create(scope, mode) + domain + ".dat";
}

bool AppDataPersistence::readPersistenceFile(ParameterText& text)
{
    CallMarker marker("AppDataPersistence::readPersistenceFile", this);
    m_mutex.acquire();
    const auto content = SafeFile::read(m_filePath);
    m_mutex.release();
    if (!content)
        return false;
    text = ParameterText::parse(*content);
    return true;
}

bool AppDataPersistence::writePersistenceFile(const ParameterText& text)
{
    CallMarker marker("AppDataPersistence::writePersistenceFile", this);
    return ParameterFile::replace(m_filePath, text.toText());
}
