#pragma once

#include "KFExceptionHandler.h"

#include <map>
#include <string>

/// Never made: reaches what is kept of the last violation; no report shows its code.
struct KeptViolation : KFExceptionHandler {
    using Parameters = std::map<std::string, std::string>;
    static const Parameters& parameters() { return m_ExceptParams; }
    static const std::string& code() { return m_ExceptParams["Code"]; }
};
