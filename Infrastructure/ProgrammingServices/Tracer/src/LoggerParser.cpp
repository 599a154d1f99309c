#include "LoggerParser.h"

#include "Logger.h"

LoggerParser::LoggerParser(LoggerScanner& scanner) : ConfigParser(scanner, "log") {}

void LoggerParser::apply(const Statement& statement)
{
    Logger* const logger = Logger::GetInstance();
    if (logger == nullptr)
        return;
    switch (static_cast<LoggerScanner::Command>(statement.command)) {
    case LoggerScanner::LogOn:
        logger->setActive(true);
        break;
    case LoggerScanner::LogOff:
        logger->setActive(false);
        break;
    case LoggerScanner::LogClock:
        logger->setPrintTime(true);
        break;
    case LoggerScanner::LogMustFlush:
        logger->setSynchronous(true);
        break;
    case LoggerScanner::LogSetFileName:
        logger->SetFileName(statement.name);
        break;
    case LoggerScanner::LogSetMaxLines:
        logger->setMaxLinesPerFile(statement.number);
        break;
    case LoggerScanner::LogSetMaxFiles:
        logger->setMaxFiles(statement.number);
        break;
    case LoggerScanner::LogSetMsgFilter:
        logger->addLevels(statement.mask);
        break;
    }
}
