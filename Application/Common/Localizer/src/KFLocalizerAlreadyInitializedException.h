#pragma once

#include "KFLocalizerException.h"
#include "KFNamedException.h"

/// The localizer was initialised twice, be it with the same file.
class KFLocalizerAlreadyInitializedException
    : public KFNamedException<"KFLocalizerAlreadyInitializedException", KFLocalizerException> {
public:
    KFLocalizerAlreadyInitializedException(const std::string& fileName, int line)
        : KFNamedException("LOCALIZER_ALREADY_INITIALIZED", fileName, line)
    {
    }
};
