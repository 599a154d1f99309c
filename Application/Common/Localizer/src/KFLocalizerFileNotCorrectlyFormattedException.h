#pragma once

#include "KFLocalizerException.h"

/// The localization file is not UTF-8 text: the only format error there is.
class KFLocalizerFileNotCorrectlyFormattedException : public KFLocalizerException {
public:
    KFLocalizerFileNotCorrectlyFormattedException(const std::string& fileName, int line);
    KFLocalizerFileNotCorrectlyFormattedException(
        const KFLocalizerFileNotCorrectlyFormattedException& other);
    KFLocalizerFileNotCorrectlyFormattedException& operator=(
        const KFLocalizerFileNotCorrectlyFormattedException&) = delete;
    ~KFLocalizerFileNotCorrectlyFormattedException() override;
};
