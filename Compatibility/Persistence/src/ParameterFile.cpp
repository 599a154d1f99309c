#include "ParameterFile.h"

#include "CallMarker.h"
#include "Logger.h"
#include "SafeFile.h"

bool ParameterFile::replace(const std::string& path, std::string_view content)
{
    CallMarker marker("ParameterFile::replace");
    const std::string failure = SafeFile::replace(path, content, SafeFile::Backup::none);
    if (!failure.empty()) {
        TAV_LOG(
            LoggerMsgType::ERROR, "Cannot write the parameters to %s: %s", path.c_str(),
            failure.c_str());
    }
    return failure.empty();
}
