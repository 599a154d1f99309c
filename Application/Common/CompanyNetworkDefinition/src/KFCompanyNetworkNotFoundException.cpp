#include "KFCompanyNetworkNotFoundException.h"

#include "CallMarker.h"

KFCompanyNetworkNotFoundException::KFCompanyNetworkNotFoundException(
    const std::string& fileName, int line)
    : KFException("COMPANY_NOT_FOUND", fileName, line)
{
}

std::string KFCompanyNetworkNotFoundException::toString() const
{
    CallMarker marker("KFCompanyNetworkNotFoundException::toString", this);
    return std::string("Company Network Not Found Exception : ") + what() + " on file " +
           getFileName() + " at line " + std::to_string(getLine());
}
