#include "TracerConfigFileParser.h"

TracerConfigFileParser::TracerConfigFileParser(const char* fileName)
    : m_scanner(fileName), m_parser(m_scanner)
{
}

bool TracerConfigFileParser::parse()
{
    return m_parser.parse();
}
