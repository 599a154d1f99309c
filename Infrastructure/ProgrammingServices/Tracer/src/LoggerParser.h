#pragma once

#include "ConfigParser.h"
#include "LoggerScanner.h"

/// Applies the commands of a logger configuration file to the published log; without one they are
/// read and have no effect.
class LoggerParser : public ConfigParser {
public:
    explicit LoggerParser(LoggerScanner& scanner);

private:
    void apply(const Statement& statement) override;
};
