#pragma once

#include "FlushThread.h"
#include "KFMutex.h"

class Logger;

/// Writes for one log. Kept: it never ends, and goes on without a log that has gone.
class LoggerFlushThread : public FlushThread {
public:
    explicit LoggerFlushThread(Logger* logger) : m_logger(logger) {}

    void letGo() override;

private:
    bool writePending() override;

    KFMutex m_mutex{false};
    Logger* m_logger;
};
