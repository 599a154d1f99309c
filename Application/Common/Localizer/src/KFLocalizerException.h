#pragma once

#include "KFNamedException.h"

/// Base of what the localizer throws. The name tells the failure; the recorded unit and line tell
/// which check found it.
class KFLocalizerException : public KFNamedException<"KFLocalizerException", KFException> {
public:
    using KFNamedException::KFNamedException;

    /// "Localizer Exception : <name> on file <unit> at line <line>".
    std::string toString() const override;
};
