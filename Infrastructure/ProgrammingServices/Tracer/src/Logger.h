#pragma once

#include "LineOutput.h"
#include "LoggerMsgType.h"

#include <atomic>
#include <cstdint>

/// The process-wide log: short messages for an operator, each one line with a level and, if asked
/// for, the time. The start-up creates it, publishes it, gives it its folder and lets it read its
/// configuration file; it is never destroyed while the process lives.
///
/// Callers write through TAV_LOG, which applies the level filter; any thread may. Lines go where
/// LineOutput sends them.
class Logger : public LineOutput {
public:
    /// The published log; null until one is set.
    static Logger* GetInstance();
    /// Publishes a log, which must outlive the process's last line; null is a violation.
    static void SetInstance(Logger* pTheLogger);

    Logger();
    /// Switches logging off and unpublishes the log. Kept: pending lines are lost unless
    /// FinishLogging() was called, and the background thread is not stopped; it finds no log to
    /// write any more.
    ~Logger() override;

    /// Applies a configuration file and, when it switches logging on, initializes the output. The
    /// commands act on the published log. A null name is a violation.
    void ReadConfigFile(const char* fileName);

    /// Whether a line of the level is to be written: logging is on and the mask has the level.
    bool logs(LoggerMsgType type) const;

    /// Formats and emits one line; does not filter by itself. Never throws: a line for which there
    /// is no memory is lost.
    void PrintMsg(LoggerMsgType type, const char* format, ...)
        __attribute__((format(printf, 3, 4)));

    /// Switches logging off and, unless synchronous, writes what is pending: for ever when the file
    /// cannot be opened, see drain() for the end of a process.
    void FinishLogging() { finish(); }

    bool printsTime() const { return m_printTime; }
    void setPrintTime(bool printTime) { m_printTime = printTime; }
    /// The levels that are logged, a set of LoggerMsgType bits.
    std::uint32_t getLevelMask() const { return m_levelMask; }
    void addLevels(std::uint32_t levels) { m_levelMask |= levels; }

private:
    std::shared_ptr<FlushThread> makeFlushThread() override;
    [[noreturn]] void endWithoutFileName() override;

    static std::atomic<Logger*> m_pInstance;

    std::atomic<bool> m_printTime = false;
    std::atomic<std::uint32_t> m_levelMask = 0;
};

/// Writes a log line of a level: TAV_LOG(LoggerMsgType::ERROR, "cannot write %s", path).
/// A macro, so that the arguments are not evaluated when nothing is to be written.
#define TAV_LOG(type, ...)                                                                         \
    do {                                                                                           \
        Logger* const tavLogger = Logger::GetInstance();                                           \
        if (tavLogger != nullptr && tavLogger->logs(type))                                         \
            tavLogger->PrintMsg(type, __VA_ARGS__);                                                \
    } while (false)
