#pragma once

#include "KFLocalizerException.h"

/// A text was asked for before a localization file was loaded.
class KFLocalizerNotInitializedException : public KFLocalizerException {
public:
    KFLocalizerNotInitializedException(const std::string& fileName, int line);
    KFLocalizerNotInitializedException(const KFLocalizerNotInitializedException& other);
    KFLocalizerNotInitializedException& operator=(const KFLocalizerNotInitializedException&) =
        delete;
    ~KFLocalizerNotInitializedException() override;
};
