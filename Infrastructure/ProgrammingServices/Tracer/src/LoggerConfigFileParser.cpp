#include "LoggerConfigFileParser.h"

LoggerConfigFileParser::LoggerConfigFileParser(const char* fileName)
    : m_scanner(fileName), m_parser(m_scanner)
{
}

bool LoggerConfigFileParser::parse()
{
    return m_parser.parse();
}
