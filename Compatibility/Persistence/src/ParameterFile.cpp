#include "ParameterFile.h"

#include "CallMarker.h"
#include "DataFolder.h"
#include "Logger.h"
#include "SafeFile.h"

std::optional<std::string> ParameterFile::read(const std::string& path)
{
    CallMarker marker("ParameterFile::read");
    std::string content;
    const std::string failure = SafeFile::readForChange(path, content);
    if (failure.empty())
        return content;
    TAV_LOG(
        LoggerMsgType::ERROR, "Cannot read the parameters of %s: %s", path.c_str(),
        failure.c_str());
    return std::nullopt;
}

bool ParameterFile::replace(
    const std::string& path, t_PersistenceMode mode, std::string_view content)
{
    CallMarker marker("ParameterFile::replace");
    DataFolder::makeMissing(path.substr(0, path.rfind('/')), mode);
    const std::string failure = SafeFile::replace(path, content, SafeFile::Backup::none);
    if (!failure.empty()) {
        TAV_LOG(
            LoggerMsgType::ERROR, "Cannot write the parameters to %s: %s", path.c_str(),
            failure.c_str());
    }
    return failure.empty();
}
