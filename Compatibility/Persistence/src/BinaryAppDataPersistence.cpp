#include "BinaryAppDataPersistence.h"

#include "CallMarker.h"
#include "DataFolder.h"
#include "Logger.h"
#include "ParameterFile.h"
#include "SafeFile.h"

#include <algorithm>
#include <memory>

BinaryAppDataPersistence::BinaryAppDataPersistence(
    const std::string& scope, const std::string& domain, t_PersistenceMode mode)
    : m_filePath(BinaryAppDataPersistence::getPersistenceFilePath(scope, domain, mode)),
      m_mode(mode)
{
    CallMarker marker(
        "BinaryAppDataPersistence", "BinaryAppDataPersistence::constructor", true, this);
}

BinaryAppDataPersistence::~BinaryAppDataPersistence()
{
    CallMarker marker(
        "BinaryAppDataPersistence", "BinaryAppDataPersistence::destructor", false, this);
}

bool BinaryAppDataPersistence::writeUnformattedParam(
    const std::string& name, const char* data, int size)
{
    CallMarker marker("BinaryAppDataPersistence::writeUnformattedParam", this);
    if (size < 0 || (data == nullptr && size > 0))
        return false;
    std::string content;
    if (const std::string failure = SafeFile::readForChange(m_filePath, content);
        !failure.empty()) {
        ParameterFile::logUnreadable(m_filePath, failure);
        return false;
    }
    std::string_view unread = content;
    t_BinaryParamMap parameters = ParameterRecords::takeAll(unread);
    parameters.insert_or_assign(name, t_Param(name, data, size));
    const bool isWritten = writePersistenceFile(parameters);
    if (isWritten && !unread.empty())
        logDropped(unread.size());
    return isWritten;
}

void BinaryAppDataPersistence::logDropped(std::size_t size) const
{
    CallMarker marker("BinaryAppDataPersistence::logDropped", this);
    TAV_LOG(
        LoggerMsgType::WARNING, "Dropped the last %zu bytes of %s: A record was broken", size,
        m_filePath.c_str());
}

char* BinaryAppDataPersistence::readUnformattedParam(const std::string& name, int& size)
{
    CallMarker marker("BinaryAppDataPersistence::readUnformattedParam", this);
    t_BinaryParamMap parameters;
    readPersistenceFile(parameters);
    const auto found = parameters.find(name);
    if (found == parameters.end()) {
        TAV_TRACE(marker, TraceMsgType::D, "Parameter '%s' not found", name.c_str());
        return nullptr;
    }
    size = found->second.getBufferSize();
    // NOLINTNEXTLINE(modernize-avoid-c-arrays): the caller releases it with delete[]
    auto copy = std::make_unique<char[]>(static_cast<std::size_t>(size));
    std::copy_n(found->second.getInternalBuffer(), size, copy.get());
    return copy.release();
}

void BinaryAppDataPersistence::eraseAllParams()
{
    CallMarker marker("BinaryAppDataPersistence::eraseAllParams", this);
    // Kept: unlike the text store, which makes no file for it
    writePersistenceFile({});
}

std::string BinaryAppDataPersistence::getPersistenceFilePath(
    const std::string& scope, const std::string& domain, t_PersistenceMode mode)
{
    CallMarker marker("BinaryAppDataPersistence::getPersistenceFilePath", this);
    return DataFolder::create(scope, mode) + domain + "_binary.dat";
}

bool BinaryAppDataPersistence::readPersistenceFile(t_BinaryParamMap& parameters)
{
    CallMarker marker("BinaryAppDataPersistence::readPersistenceFile", this);
    const auto content = SafeFile::read(m_filePath);
    parameters = ParameterRecords::parse(content.value_or(std::string()));
    return content.has_value();
}

bool BinaryAppDataPersistence::writePersistenceFile(const t_BinaryParamMap& parameters)
{
    CallMarker marker("BinaryAppDataPersistence::writePersistenceFile", this);
    return ParameterFile::replace(m_filePath, m_mode, ParameterRecords::toBytes(parameters));
}
