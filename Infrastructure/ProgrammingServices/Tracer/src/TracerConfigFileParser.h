#pragma once

#include "TracerConfigFileScanner.h"
#include "TracerParser.h"

/// Reads a tracer configuration file and applies it to the published tracer. What is wrong with the
/// file is told on standard error.
class TracerConfigFileParser {
public:
    explicit TracerConfigFileParser(const char* fileName);

    /// False at a syntax error, which ends the parse; the commands before it stay applied.
    bool parse();

private:
    TracerConfigFileScanner m_scanner;
    TracerParser m_parser;
};
