#pragma once

/// Reads a diagnostics configuration file: a scanner of the file and the parser of what it scans,
/// joined. What is wrong with the file is told on standard error.
template<typename FileScanner, typename Parser>
class ConfigFileParser {
public:
    explicit ConfigFileParser(const char* fileName) : m_scanner(fileName), m_parser(m_scanner) {}

    /// False at a syntax error, which ends the parse; the commands before it stay applied.
    bool parse() { return m_parser.parse(); }

private:
    FileScanner m_scanner;
    Parser m_parser;
};
