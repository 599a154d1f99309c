#include "LoggerFlushThread.h"

#include "KFMutexGuard.h"
#include "Logger.h"

void LoggerFlushThread::letGo()
{
    const KFMutexGuard guard(m_mutex);
    m_logger = nullptr;
}

bool LoggerFlushThread::writePending()
{
    const KFMutexGuard guard(m_mutex);
    if (m_logger != nullptr)
        m_logger->writeInBackground();
    return true;
}
