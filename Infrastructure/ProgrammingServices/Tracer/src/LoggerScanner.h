#pragma once

#include "ConfigScanner.h"

#include <utility>

/// Scans the bytes of a logger configuration file.
class LoggerScanner : public ConfigScanner {
public:
    explicit LoggerScanner(std::string content) : ConfigScanner(std::move(content), "LOG_") {}
};
