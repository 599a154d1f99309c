#pragma once

#include "Logger.h"
#include "TemporaryFolder.h"

#include <string>

/// An active log that is published for one test: every line is written at once to a file of its
/// own, without the time.
class PublishedLogger {
public:
    PublishedLogger()
    {
        m_logger.setSynchronous(true);
        m_logger.addLevels(0x1FF);
        m_logger.SetFileName(m_folder.file("log"));
        m_logger.setActive(true);
        Logger::SetInstance(&m_logger);
    }

    std::string lines() const { return m_folder.read("log_0.txt"); }

private:
    TemporaryFolder m_folder;
    Logger m_logger;
};
