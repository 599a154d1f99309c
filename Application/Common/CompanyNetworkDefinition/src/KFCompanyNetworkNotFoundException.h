#pragma once

#include "KFException.h"

/// No company network has the display name asked for.
class KFCompanyNetworkNotFoundException : public KFException {
public:
    KFCompanyNetworkNotFoundException(const std::string& fileName, int line);
    KFCompanyNetworkNotFoundException(const KFCompanyNetworkNotFoundException& other);
    KFCompanyNetworkNotFoundException& operator=(const KFCompanyNetworkNotFoundException&) = delete;
    ~KFCompanyNetworkNotFoundException() override;

    std::string toString() const override;
};
