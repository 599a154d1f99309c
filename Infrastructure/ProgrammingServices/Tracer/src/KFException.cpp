#include "KFException.h"

#include <utility>

KFException::KFException(std::string description, std::string fileName, int line)
    : m_description(std::move(description)), m_fileName(std::move(fileName)), m_line(line)
{
}

std::string KFException::toString() const
{
    return "Exception : " + m_description + " on file " + m_fileName + " line " +
           std::to_string(m_line);
}
