#include "CallMarker.h"
#include "ConfigurationSession.h"
#include "GrantingAuthorizationServices.h"
#include "main.h"

namespace {

std::unique_ptr<AuthorizationServices> makeAuthorizationServices()
{
    CallMarker marker("makeAuthorizationServices");
    return std::make_unique<GrantingAuthorizationServices>();
}

} // namespace

/// The tool for trials on private data, never installed: whoever starts it has every right, and
/// the relaunched process is his own.
int main(int argc, char** argv)
{
    return tavConfigurationMain(argc, argv, &makeAuthorizationServices, &ConfigurationSession::run);
}
