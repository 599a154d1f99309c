#pragma once

#include "LoggerConfigFileScanner.h"
#include "LoggerParser.h"

/// Reads a logger configuration file and applies it to the published log. What is wrong with the
/// file is told on standard error.
class LoggerConfigFileParser {
public:
    explicit LoggerConfigFileParser(const char* fileName);

    /// False at a syntax error, which ends the parse; the commands before it stay applied.
    bool parse();

private:
    LoggerConfigFileScanner m_scanner;
    LoggerParser m_parser;
};
