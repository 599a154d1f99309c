#pragma once

#include "KFLocalizerException.h"

/// The localization file cannot be opened.
class KFLocalizerFileNotFoundException : public KFLocalizerException {
public:
    KFLocalizerFileNotFoundException(const std::string& fileName, int line);
    KFLocalizerFileNotFoundException(const KFLocalizerFileNotFoundException& other);
    KFLocalizerFileNotFoundException& operator=(const KFLocalizerFileNotFoundException&) = delete;
    ~KFLocalizerFileNotFoundException() override;
};
