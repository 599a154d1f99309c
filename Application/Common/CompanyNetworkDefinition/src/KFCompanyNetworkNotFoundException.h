#pragma once

#include "KFNamedException.h"

/// No company network has the display name asked for.
class KFCompanyNetworkNotFoundException
    : public KFNamedException<"KFCompanyNetworkNotFoundException", KFException> {
public:
    KFCompanyNetworkNotFoundException(const std::string& fileName, int line)
        : KFNamedException("COMPANY_NOT_FOUND", fileName, line)
    {
    }

    std::string toString() const override;
};
