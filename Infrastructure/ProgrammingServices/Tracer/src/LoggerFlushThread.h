#pragma once

#include "KFMutex.h"
#include "KFThread.h"

class Logger;

/// Writes a log's pending lines once a second. It has no name, so that traces do not show it.
///
/// It never ends by itself: the log that it belongs to lets it go with forgetLogger().
class LoggerFlushThread : public KFThread {
public:
    explicit LoggerFlushThread(Logger* logger);

    /// Returns when no write pass is under way; none follows. A pass waits for the log's mutex for
    /// a second at most, so that a thread that never releases it may call this, too.
    void forgetLogger();

    void run() override;

private:
    KFMutex m_mutex{false};
    Logger* m_logger;
};
