#include "ConfigParser.h"

#include "Console.h"

ConfigParser::ConfigParser(ConfigScanner& scanner, const char* facility)
    : m_scanner(scanner), m_facility(facility)
{
}

bool ConfigParser::parse()
{
    while (m_scanner.nextLine()) {
        if (!parseLine()) {
            Console::writeError(
                "syntax error at line " + std::to_string(m_scanner.lineNumber()) + " of " +
                m_facility + " config file\n");
            return false;
        }
    }
    return true;
}

bool ConfigParser::parseLine()
{
    if (m_scanner.isAtEndOfLine())
        return true;
    const ConfigScanner::Keyword* const keyword = m_scanner.readKeyword();
    if (keyword == nullptr)
        return false;
    Statement statement;
    statement.command = keyword->command;
    if (!parseArgument(keyword->argument, statement) || !m_scanner.isAtEndOfLine())
        return false;
    apply(statement);
    return true;
}

bool ConfigParser::parseArgument(ConfigScanner::Argument argument, Statement& statement)
{
    switch (argument) {
    case ConfigScanner::Argument::name:
        return m_scanner.readName(statement.name);
    case ConfigScanner::Argument::number:
        return m_scanner.readNumber(statement.number);
    case ConfigScanner::Argument::levelWords:
        return parseLevelWords(statement.mask);
    case ConfigScanner::Argument::none:
        break;
    }
    return true;
}

bool ConfigParser::parseLevelWords(std::uint32_t& mask)
{
    do {
        if (!m_scanner.readLevelWord(mask))
            return false;
    } while (!m_scanner.isAtEndOfLine());
    return true;
}
