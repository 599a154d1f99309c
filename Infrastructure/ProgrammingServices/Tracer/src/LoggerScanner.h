#pragma once

#include "ConfigScanner.h"

#include <string>

/// The keywords of the logger's configuration file.
class LoggerScanner : public ConfigScanner {
public:
    enum Command {
        LogOn,
        LogOff,
        LogClock,
        LogMustFlush,
        LogSetFileName,
        LogSetMaxLines,
        LogSetMaxFiles,
        LogSetMsgFilter,
    };

    /// Takes the file's bytes.
    explicit LoggerScanner(std::string content);
};
