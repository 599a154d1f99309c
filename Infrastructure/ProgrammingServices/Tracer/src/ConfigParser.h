#pragma once

#include "ConfigScanner.h"

#include <cstdint>
#include <string>

/// The grammar that the diagnostics configuration files share: each line is empty, a comment, or
/// one command with its argument. A subclass applies the commands.
///
/// A command applies at the end of its line, when the whole line is known to be right. The first
/// wrong line ends the parse with one text on the standard error: nothing of that line applies, the
/// commands before it stay applied. One thread uses a parser; the scanner is the caller's.
class ConfigParser {
public:
    virtual ~ConfigParser() = default;

    ConfigParser(const ConfigParser&) = delete;
    ConfigParser& operator=(const ConfigParser&) = delete;

    /// Reads the scanner to its end; false when a line is wrong.
    bool parse();

protected:
    struct Statement {
        int command = 0;
        std::string name;
        std::int32_t number = 0;
        std::uint32_t mask = 0;
    };

    /// `facility` names the owner of the file in the error text.
    ConfigParser(ConfigScanner& scanner, const char* facility);

    virtual void apply(const Statement& statement) = 0;

private:
    bool parseLine();
    bool parseArgument(ConfigScanner::Argument argument, Statement& statement);
    bool parseLevelWords(std::uint32_t& mask);

    ConfigScanner& m_scanner;
    const char* m_facility;
};
