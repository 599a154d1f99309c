#pragma once

#include "KFDictionaryException.h"
#include "KFNamedException.h"

/// Thrown when a header line of a property list is wrong, or a line lacks the tag that it needs.
class KFDictionaryParsingException
    : public KFNamedException<"KFDictionaryParsingException", KFDictionaryException> {
    using KFNamedException::KFNamedException;
};
