#include "KFCompanyNetworkNotFoundException.h"

KFCompanyNetworkNotFoundException::KFCompanyNetworkNotFoundException(
    const std::string& fileName, int line)
    : KFException("COMPANY_NOT_FOUND", fileName, line)
{
}

std::string KFCompanyNetworkNotFoundException::toString() const
{
    return std::string("Company Network Not Found Exception : ") + what() + " on file " +
           getFileName() + " at line " + std::to_string(getLine());
}
