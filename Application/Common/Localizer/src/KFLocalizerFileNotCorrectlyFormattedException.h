#pragma once

#include "KFLocalizerException.h"
#include "KFNamedException.h"

/// The localization file is not UTF-8 text: the only format error there is.
class KFLocalizerFileNotCorrectlyFormattedException
    : public KFNamedException<
          "KFLocalizerFileNotCorrectlyFormattedException", KFLocalizerException> {
public:
    KFLocalizerFileNotCorrectlyFormattedException(const std::string& fileName, int line)
        : KFNamedException("FILE_NOT_CORRECTLY_FORMATTED", fileName, line)
    {
    }
};
