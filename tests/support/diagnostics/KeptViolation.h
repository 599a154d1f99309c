#pragma once

#include "KFExceptionHandler.h"

#include <string>

/// Never made: reaches the code of the last violation, which no report shows.
struct KeptViolation : KFExceptionHandler {
    static const std::string& code() { return m_ExceptParams["Code"]; }
};
