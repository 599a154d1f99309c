#pragma once

#include "KFLocalizerException.h"
#include "KFNamedException.h"

/// A text was asked for before a localization file was loaded.
class KFLocalizerNotInitializedException
    : public KFNamedException<"KFLocalizerNotInitializedException", KFLocalizerException> {
public:
    KFLocalizerNotInitializedException(const std::string& fileName, int line)
        : KFNamedException("LOCALIZER_NOT_INITIALIZED", fileName, line)
    {
    }
};
