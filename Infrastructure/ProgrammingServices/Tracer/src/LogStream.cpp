#include "LogStream.h"

#include "Logger.h"
#include "UnlessMemoryRunsOut.h"

LogStream::LogStream(LoggerMsgType type) : m_type(type) {}

LogStream::~LogStream()
{
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-security"
    unlessMemoryRunsOut([this] { TAV_LOG(m_type, str().c_str()); });
#pragma GCC diagnostic pop
}
