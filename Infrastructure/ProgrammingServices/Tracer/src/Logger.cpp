#include "Logger.h"

#include "Contract.h"
#include "Diagnostics.h"
#include "KFMutexGuard.h"
#include "LoggerConfigFileParser.h"
#include "LoggerFlushThread.h"
#include "MessageFormatter.h"
#include "TimeStamp.h"
#include "UnlessMemoryRunsOut.h"

#include <cstdarg>
#include <string>

namespace {

constexpr const char* UNIT = "Infrastructure/ProgrammingServices/Tracer/src/Logger";

const char* tagOf(LoggerMsgType type)
{
    switch (type) {
    case LoggerMsgType::DEBUG:
        return "[DEBUG  ] ";
    case LoggerMsgType::ERROR:
        return "[ERROR  ] ";
    case LoggerMsgType::WARNING:
        return "[WARNING] ";
    case LoggerMsgType::LEVEL_0:
        return "[LEVEL_0] ";
    case LoggerMsgType::LEVEL_1:
        return "[LEVEL_1] ";
    case LoggerMsgType::LEVEL_2:
        return "[LEVEL_2] ";
    case LoggerMsgType::LEVEL_3:
        return "[LEVEL_3] ";
    case LoggerMsgType::LEVEL_4:
        return "[LEVEL_4] ";
    case LoggerMsgType::LEVEL_5:
        return "[LEVEL_5] ";
    }
    return ""; // a combination of levels has no tag
}

} // namespace

std::atomic<Logger*> Logger::m_pInstance = nullptr;

Logger* Logger::GetInstance()
{
    return m_pInstance;
}

// Kept: the post-condition is checked on the null branch alone.
void Logger::SetInstance(Logger* pTheLogger)
{
    if (!Contract::require(pTheLogger != nullptr, "pTheLogger != NULL", UNIT)) {
        Contract::ensure(m_pInstance != nullptr, "m_pInstance != NULL", UNIT);
        return;
    }
    m_pInstance = pTheLogger;
}

Logger::Logger() : LineOutput("Logger") {}

Logger::~Logger()
{
    m_active = false;
    Logger* published = this;
    m_pInstance.compare_exchange_strong(published, nullptr);
    endBackgroundWriting();
}

void Logger::ReadConfigFile(const char* fileName)
{
    if (Contract::require(fileName != nullptr, "fileName != NULL", UNIT))
        readConfigFile<LoggerConfigFileParser>(fileName);
}

bool Logger::logs(LoggerMsgType type) const
{
    return m_active && (m_levelMask & static_cast<std::uint32_t>(type)) != 0;
}

void Logger::PrintMsg(LoggerMsgType type, const char* format, ...)
{
    std::va_list arguments;
    va_start(arguments, format);
    unlessMemoryRunsOut([&] {
        const KFMutexGuard guard(m_mutex);
        std::string line;
        if (m_printTime)
            line += TimeStamp::now();
        line += tagOf(type);
        line += MessageFormatter::format(format, arguments);
        line += '\n';
        PrintString(line);
    });
    va_end(arguments);
}

std::shared_ptr<FlushThread> Logger::makeFlushThread()
{
    return std::make_shared<LoggerFlushThread>(this);
}

void Logger::endWithoutFileName()
{
    Diagnostics::endProcess("please call Logger_SET_FILE_NAME(fileName)");
}
