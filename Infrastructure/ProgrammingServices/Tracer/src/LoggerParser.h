#pragma once

#include "ConfigParser.h"
#include "LoggerScanner.h"

class Logger;

/// Applies the commands of a logger configuration file to the published log.
class LoggerParser : public ConfigParser<Logger> {
public:
    explicit LoggerParser(LoggerScanner& scanner);
};
