#pragma once

#include "KFDictionaryException.h"

/// Thrown when a property list file cannot be opened for reading.
class KFDictionaryFileException : public KFDictionaryException {
public:
    KFDictionaryFileException(
        const std::string& description, const std::string& fileName, int line);
    KFDictionaryFileException(const KFDictionaryFileException& other);
    KFDictionaryFileException& operator=(const KFDictionaryFileException&) = delete;
    ~KFDictionaryFileException() override;
};
