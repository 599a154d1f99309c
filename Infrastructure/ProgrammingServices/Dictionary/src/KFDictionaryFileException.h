#pragma once

#include "KFDictionaryException.h"
#include "KFNamedException.h"

/// Thrown when a property list file cannot be opened for reading.
class KFDictionaryFileException
    : public KFNamedException<"KFDictionaryFileException", KFDictionaryException> {
    using KFNamedException::KFNamedException;
};
