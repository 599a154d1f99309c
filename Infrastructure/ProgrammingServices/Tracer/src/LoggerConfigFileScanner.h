#pragma once

#include "LoggerScanner.h"

/// Scans a logger configuration file. A file that cannot be opened gives a warning on the standard
/// error and scans as an empty one.
class LoggerConfigFileScanner : public LoggerScanner {
public:
    explicit LoggerConfigFileScanner(const char* fileName)
        : LoggerScanner(readFile(fileName, "log"))
    {
    }
};
