#pragma once

#include "KFNamedException.h"

/// The base of what the property dictionary throws; not thrown by itself.
class KFDictionaryException : public KFNamedException<"KFDictionaryException", KFException> {
    using KFNamedException::KFNamedException;
};
