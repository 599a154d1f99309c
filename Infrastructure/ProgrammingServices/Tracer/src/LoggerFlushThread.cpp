#include "LoggerFlushThread.h"

#include "Logger.h"

LoggerFlushThread::LoggerFlushThread(Logger* logger) : KFThread(nullptr), m_logger(logger) {}

void LoggerFlushThread::forgetLogger()
{
    m_mutex.acquire();
    m_logger = nullptr;
    m_mutex.release();
}

void LoggerFlushThread::run()
{
    while (isRunning()) {
        sleep(1);
        m_mutex.acquire();
        if (m_logger != nullptr)
            m_logger->writeInBackground();
        m_mutex.release();
    }
}
