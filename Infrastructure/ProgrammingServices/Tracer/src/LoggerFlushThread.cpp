#include "LoggerFlushThread.h"

#include "KFMutexGuard.h"
#include "Logger.h"

LoggerFlushThread::LoggerFlushThread(Logger* logger) : KFThread(nullptr), m_logger(logger) {}

void LoggerFlushThread::forgetLogger()
{
    const KFMutexGuard guard(m_mutex);
    m_logger = nullptr;
}

void LoggerFlushThread::run()
{
    while (isRunning()) {
        sleep(1);
        const KFMutexGuard guard(m_mutex);
        if (m_logger != nullptr)
            m_logger->writeInBackground();
    }
}
