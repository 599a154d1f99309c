#pragma once

#include "KFLocalizerException.h"

/// The localizer was initialised twice, be it with the same file.
class KFLocalizerAlreadyInitializedException : public KFLocalizerException {
public:
    KFLocalizerAlreadyInitializedException(const std::string& fileName, int line);
    KFLocalizerAlreadyInitializedException(const KFLocalizerAlreadyInitializedException& other);
    KFLocalizerAlreadyInitializedException& operator=(
        const KFLocalizerAlreadyInitializedException&) = delete;
    ~KFLocalizerAlreadyInitializedException() override;
};
