#include "KFCompanyNetworkNotFoundException.h"

std::string KFCompanyNetworkNotFoundException::toString() const
{
    CallMarker marker("KFCompanyNetworkNotFoundException::toString", this);
    return report("Company Network Not Found Exception", "at line");
}
