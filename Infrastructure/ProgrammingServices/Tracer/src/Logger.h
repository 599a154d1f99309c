#pragma once

#include "LineOutput.h"
#include "LoggerMsgType.h"

/// The process-wide log.
class Logger : public LineOutput {
public:
    Logger();

    /// The published log; null until one is set.
    static Logger* GetInstance();

    /// Whether a line of the level is to be written.
    bool logs(LoggerMsgType type) const;

    /// Formats and emits one line; does not filter by itself.
    void PrintMsg(LoggerMsgType type, const char* format, ...)
        __attribute__((format(printf, 3, 4)));
};

/// Writes a log line of a level: TAV_LOG(LoggerMsgType::ERROR, "cannot write %s", path).
/// A macro, so that the arguments are not evaluated when nothing is to be written.
#define TAV_LOG(type, ...)                                                                         \
    do {                                                                                           \
        Logger* const tavLogger = Logger::GetInstance();                                           \
        if (tavLogger != nullptr && tavLogger->logs(type))                                         \
            tavLogger->PrintMsg(type, __VA_ARGS__);                                                \
    } while (false)
