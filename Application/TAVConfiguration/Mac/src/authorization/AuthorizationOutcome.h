#pragma once

#include "AuthorizationServices.h"

#include <string>

/// What became of an attempt; the reason is of a failure that the user does not know yet.
struct AuthorizationOutcome {
    AuthorizationStatus status = AuthorizationStatus::success;
    std::string reason{};
};
