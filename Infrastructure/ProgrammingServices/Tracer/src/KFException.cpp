#include "KFException.h"

#include <utility>

KFException::KFException(std::string description, std::string fileName, int line)
    : m_description(std::move(description)), m_fileName(std::move(fileName)), m_line(line)
{
}

std::string KFException::toString() const
{
    return report("Exception", "line");
}

std::string KFException::report(const char* kind, const char* beforeLine) const
{
    return kind + (" : " + m_description) + " on file " + m_fileName + " " + beforeLine + " " +
           std::to_string(m_line);
}
