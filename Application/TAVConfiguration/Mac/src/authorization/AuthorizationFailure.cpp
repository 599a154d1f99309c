#include "AuthorizationFailure.h"

#include "CallMarker.h"
#include "Console.h"

AuthorizationStatus AuthorizationFailure::tell(
    AuthorizationStatus status, const std::string& attempt, const std::string& reason)
{
    CallMarker marker("AuthorizationFailure::tell");
    Console::writeError("TavConfiguration: cannot " + attempt + ": " + reason + "\n");
    return status;
}
