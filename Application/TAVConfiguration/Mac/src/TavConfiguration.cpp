#include "CallMarker.h"
#include "ConfigurationSession.h"
#include "PolkitAuthorizationServices.h"
#include "main.h"

namespace {

std::unique_ptr<AuthorizationServices> makeAuthorizationServices()
{
    CallMarker marker("makeAuthorizationServices");
    return std::make_unique<PolkitAuthorizationServices>();
}

} // namespace

/// The tool: administrator rights come from the system's authorization service.
int main(int argc, char** argv)
{
    return tavConfigurationMain(argc, argv, &makeAuthorizationServices, &ConfigurationSession::run);
}
