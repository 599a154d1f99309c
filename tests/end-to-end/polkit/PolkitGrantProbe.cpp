#include "PolkitAuthorizationServices.h"
#include "PolkitClient.h"

#include <cstdint>
#include <cstdio>
#include <string>

/// Asks for the administrator right as the start-up does and frees it again, and prints whether
/// polkit grants the action without asking: while the right is kept, and after it was freed.
///
/// Arguments: the name of the action, and the flags to ask with.
int main(int argc, char** argv)
{
    if (argc != 3)
        return 1;
    const auto isGranted = [argv] {
        return PolkitClient::check(argv[1], false).verdict == PolkitClient::Verdict::granted;
    };

    PolkitAuthorizationServices services;
    std::unique_ptr<Authorization> authorization;
    services.AuthorizationCreate(nullptr, AuthorizationFlag::DEFAULTS, &authorization);
    const AuthorizationStatus status = services.AuthorizationCopyRights(
        *authorization, {{"system.privilege.admin"}},
        static_cast<std::uint32_t>(std::stoul(argv[2])));
    const bool whileKept = isGranted();
    const AuthorizationStatus freed =
        services.AuthorizationFree(std::move(authorization), AuthorizationFlag::DEFAULTS);
    std::fprintf(
        stderr, "asked %d, kept %d, freed %d, left %d\n", static_cast<int>(status), whileKept,
        static_cast<int>(freed), isGranted());
    return 0;
}
