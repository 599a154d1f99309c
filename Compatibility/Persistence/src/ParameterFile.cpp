#include "ParameterFile.h"

#include "CallMarker.h"
#include "DataFolder.h"
#include "Logger.h"
#include "SafeFile.h"

void ParameterFile::logUnreadable(const std::string& path, const std::string& reason)
{
    CallMarker marker("ParameterFile::logUnreadable");
    TAV_LOG(
        LoggerMsgType::ERROR, "Cannot read the parameters of %s: %s", path.c_str(), reason.c_str());
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
