#pragma once

#include "KFDictionaryException.h"

/// Thrown when a header line of a property list is wrong, or a line lacks the tag that it needs.
class KFDictionaryParsingException : public KFDictionaryException {
public:
    KFDictionaryParsingException(
        const std::string& description, const std::string& fileName, int line);
    KFDictionaryParsingException(const KFDictionaryParsingException& other);
    KFDictionaryParsingException& operator=(const KFDictionaryParsingException&) = delete;
    ~KFDictionaryParsingException() override;
};
