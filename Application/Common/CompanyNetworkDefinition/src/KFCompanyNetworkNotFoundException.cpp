#include "KFCompanyNetworkNotFoundException.h"

#include "CallMarker.h"

KFCompanyNetworkNotFoundException::KFCompanyNetworkNotFoundException(
    const std::string& fileName, int line)
    : KFException("COMPANY_NOT_FOUND", fileName, line)
{
    CallMarker marker(
        "KFCompanyNetworkNotFoundException", "KFCompanyNetworkNotFoundException::constructor", true,
        this);
}

KFCompanyNetworkNotFoundException::KFCompanyNetworkNotFoundException(
    const KFCompanyNetworkNotFoundException& other)
    : KFException(other)
{
    CallMarker marker(
        "KFCompanyNetworkNotFoundException", "KFCompanyNetworkNotFoundException::constructor", true,
        this);
}

KFCompanyNetworkNotFoundException::~KFCompanyNetworkNotFoundException()
{
    CallMarker marker(
        "KFCompanyNetworkNotFoundException", "KFCompanyNetworkNotFoundException::destructor", false,
        this);
}

std::string KFCompanyNetworkNotFoundException::toString() const
{
    CallMarker marker("KFCompanyNetworkNotFoundException::toString", this);
    return std::string("Company Network Not Found Exception : ") + what() + " on file " +
           getFileName() + " at line " + std::to_string(getLine());
}
