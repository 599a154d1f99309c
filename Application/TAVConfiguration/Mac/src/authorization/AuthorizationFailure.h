#pragma once

#include "AuthorizationServices.h"

#include <string>

/// Tells the user on standard error why he does not get what he asked for.
class AuthorizationFailure {
public:
    /// Tells "TavConfiguration: cannot <attempt>: <reason>", and hands the status on.
    static AuthorizationStatus tell(
        AuthorizationStatus status, const std::string& attempt, const std::string& reason);
};
