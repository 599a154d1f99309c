#include "LoggerParser.h"

#include "Logger.h"

#include <array>

namespace {

using namespace ConfigArgument;

constexpr auto COMMANDS = std::to_array<LoggerParser::Command>({
    {"LOG_ON", [](Logger& logger, None) { logger.setActive(true); }},
    {"LOG_OFF", [](Logger& logger, None) { logger.setActive(false); }},
    {"LOG_CLOCK", [](Logger& logger, None) { logger.setPrintTime(true); }},
    {"LOG_MUST_FLUSH", [](Logger& logger, None) { logger.setSynchronous(true); }},
    {"LOG_SET_FILE_NAME", [](Logger& logger, Name name) { logger.SetFileName(name); }},
    {"LOG_SET_MAX_LINES", [](Logger& logger, Number lines) { logger.setMaxLinesPerFile(lines); }},
    {"LOG_SET_MAX_FILES", [](Logger& logger, Number files) { logger.setMaxFiles(files); }},
    {"LOG_SET_MSG_FILTER", [](Logger& logger, Mask levels) { logger.addLevels(levels); }},
});

} // namespace

LoggerParser::LoggerParser(LoggerScanner& scanner) : ConfigParser(scanner, "log", COMMANDS) {}
