#include "ConfigurationSession.h"
#include "PolkitAuthorizationServices.h"
#include "main.h"

/// The tool: administrator rights come from the system's authorization service.
int main(int argc, char** argv)
{
    PolkitAuthorizationServices services;
    return tavConfigurationMain(argc, argv, services, &ConfigurationSession::run);
}
