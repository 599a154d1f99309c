#pragma once

#include "KFException.h"

/// The base of what the property dictionary throws; not thrown by itself.
class KFDictionaryException : public KFException {
public:
    KFDictionaryException(const std::string& description, const std::string& fileName, int line);
    KFDictionaryException(const KFDictionaryException& other);
    KFDictionaryException& operator=(const KFDictionaryException&) = delete;
    ~KFDictionaryException() override;
};
