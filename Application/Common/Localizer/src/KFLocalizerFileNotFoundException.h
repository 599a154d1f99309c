#pragma once

#include "KFLocalizerException.h"

/// The localization file cannot be opened.
class KFLocalizerFileNotFoundException : public KFLocalizerException {
public:
    KFLocalizerFileNotFoundException(const std::string& fileName, int line)
        : KFLocalizerException("LOCALIZATION_FILE_NOT_FOUND", fileName, line)
    {
    }
};
