#include "AppDataPersistence.h"

#include "CallMarker.h"
#include "DataFolder.h"
#include "FileSystemManagement.h"
#include "KFMutexGuard.h"
#include "ParameterFile.h"
#include "SafeFile.h"

#include <optional>

AppDataPersistence::AppDataPersistence(
    const std::string& scope, const std::string& domain, t_PersistenceMode mode)
    : m_filePath(getPersistenceFilePath(scope, domain, mode)), m_mode(mode)
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
    std::string content;
    if (const std::string failure = readForChange(content); !failure.empty()) {
        ParameterFile::logUnreadable(m_filePath, failure);
        return false;
    }
    ParameterText text = ParameterText::parse(content);
    text.parameters[name] = value;
    return writePersistenceFile(text);
}

bool AppDataPersistence::readParam(const std::string& name, std::string& value)
{
    CallMarker marker("AppDataPersistence::readParam", this);
    t_paramMap parameters;
    readPersistenceFile(parameters);
    const auto found = parameters.find(name);
    if (found == parameters.end()) {
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

std::string AppDataPersistence::readForChange(std::string& content)
{
    CallMarker marker("AppDataPersistence::readForChange", this);
    const KFMutexGuard guard(m_mutex);
    return SafeFile::readForChange(m_filePath, content);
}

bool AppDataPersistence::readPersistenceFile(t_paramMap& parameters)
{
    CallMarker marker("AppDataPersistence::readPersistenceFile", this);
    std::optional<std::string> content;
    {
        const KFMutexGuard guard(m_mutex);
        content = SafeFile::read(m_filePath);
    }
    parameters = ParameterText::parse(content.value_or(std::string())).parameters;
    return content.has_value();
}

bool AppDataPersistence::writePersistenceFile(const ParameterText& text)
{
    CallMarker marker("AppDataPersistence::writePersistenceFile", this);
    return ParameterFile::replace(m_filePath, m_mode, text.toText());
}
