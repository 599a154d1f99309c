#pragma once

#include "KFLocalizerException.h"
#include "KFNamedException.h"

/// The localization file cannot be opened.
class KFLocalizerFileNotFoundException
    : public KFNamedException<"KFLocalizerFileNotFoundException", KFLocalizerException> {
public:
    KFLocalizerFileNotFoundException(const std::string& fileName, int line)
        : KFNamedException("LOCALIZATION_FILE_NOT_FOUND", fileName, line)
    {
    }
};
