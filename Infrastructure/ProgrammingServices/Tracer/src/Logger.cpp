#include "Logger.h"

Logger::Logger() : LineOutput("Logger") {}

Logger* Logger::GetInstance()
{
    return nullptr;
}

bool Logger::logs(LoggerMsgType /*type*/) const
{
    return false;
}

void Logger::PrintMsg(LoggerMsgType /*type*/, const char* /*format*/, ...) {}
