#include "LoggerScanner.h"

#include <array>
#include <utility>

namespace {

using Argument = ConfigScanner::Argument;
using Keyword = ConfigScanner::Keyword;

constexpr std::array keywords{
    Keyword{"LOG_ON", LoggerScanner::LogOn, Argument::none},
    Keyword{"LOG_OFF", LoggerScanner::LogOff, Argument::none},
    Keyword{"LOG_CLOCK", LoggerScanner::LogClock, Argument::none},
    Keyword{"LOG_MUST_FLUSH", LoggerScanner::LogMustFlush, Argument::none},
    Keyword{"LOG_SET_FILE_NAME", LoggerScanner::LogSetFileName, Argument::name},
    Keyword{"LOG_SET_MAX_LINES", LoggerScanner::LogSetMaxLines, Argument::number},
    Keyword{"LOG_SET_MAX_FILES", LoggerScanner::LogSetMaxFiles, Argument::number},
    Keyword{"LOG_SET_MSG_FILTER", LoggerScanner::LogSetMsgFilter, Argument::levelWords},
};

} // namespace

LoggerScanner::LoggerScanner(std::string content)
    : ConfigScanner(std::move(content), keywords, "LOG_")
{
}
