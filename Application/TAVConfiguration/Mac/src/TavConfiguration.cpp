#include "DesktopSession.h"
#include "PolkitAuthorizationServices.h"
#include "main.h"
#include "runConfigurationApplication.h"

namespace {

int runInSession(int& argc, char** argv)
{
    DesktopSession::prepare();
    return runConfigurationApplication(argc, argv);
}

} // namespace

/// The installed program: it asks the system's authorization service.
int main(int argc, char** argv)
{
    PolkitAuthorizationServices services;
    return tavConfigurationMain(argc, argv, services, runInSession);
}
