#pragma once

#include "KFException.h"

#include <string>

/// Base of what the localizer throws. The name tells the failure; the recorded unit and line tell
/// which check found it.
class KFLocalizerException : public KFException {
public:
    KFLocalizerException(const std::string& name, const std::string& fileName, int line);
    KFLocalizerException(const KFLocalizerException& other);
    KFLocalizerException& operator=(const KFLocalizerException&) = delete;
    ~KFLocalizerException() override;

    /// "Localizer Exception : <name> on file <unit> at line <line>".
    std::string toString() const override;
};
