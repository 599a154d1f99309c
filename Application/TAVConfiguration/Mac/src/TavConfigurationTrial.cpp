#include "ConfigurationSession.h"
#include "GrantingAuthorizationServices.h"
#include "main.h"

/// The tool for trials on private data, never installed: whoever starts it has every right, and
/// the relaunched process is his own.
int main(int argc, char** argv)
{
    GrantingAuthorizationServices services;
    return tavConfigurationMain(argc, argv, services, &ConfigurationSession::run);
}
