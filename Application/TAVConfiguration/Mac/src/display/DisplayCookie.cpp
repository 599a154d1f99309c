#include "DisplayCookie.h"

#include "CallMarker.h"

#include <array>
#include <cstring>
#include <memory>
#include <string>

#include <X11/X.h>
#include <X11/Xauth.h>
#include <netinet/in.h>
#include <unistd.h>

namespace {

/// What entries of the cookie file call a server.
struct ServerName {
    unsigned short family;
    std::string address;
};

ServerName thisMachine()
{
    std::array<char, 256> name{};
    gethostname(name.data(), name.size() - 1);
    return {FamilyLocal, name.data()};
}

ServerName serverOf(const in_addr& address)
{
    if (address.s_addr == htonl(INADDR_LOOPBACK))
        return thisMachine();
    return {FamilyInternet, {reinterpret_cast<const char*>(&address), sizeof address}};
}

ServerName serverOf(const in6_addr& address)
{
    if (IN6_IS_ADDR_V4MAPPED(&address)) {
        in_addr mapped{};
        std::memcpy(&mapped, &address.s6_addr[sizeof address - sizeof mapped], sizeof mapped);
        return serverOf(mapped);
    }
    if (IN6_IS_ADDR_LOOPBACK(&address))
        return thisMachine();
    return {FamilyInternet6, {reinterpret_cast<const char*>(&address), sizeof address}};
}

ServerName serverOf(const sockaddr_storage& address)
{
    if (address.ss_family == AF_INET)
        return serverOf(reinterpret_cast<const sockaddr_in&>(address).sin_addr);
    if (address.ss_family == AF_INET6)
        return serverOf(reinterpret_cast<const sockaddr_in6&>(address).sin6_addr);
    return thisMachine();
}

} // namespace

bool DisplayCookie::isThereFor(const sockaddr_storage& server, int displayNumber)
{
    CallMarker marker("DisplayCookie::isThereFor");
    const ServerName name = serverOf(server);
    const std::string number = std::to_string(displayNumber);
    std::array<std::string, 2> protocols{"MIT-MAGIC-COOKIE-1", "XDM-AUTHORIZATION-1"};
    std::array<char*, 2> names{protocols[0].data(), protocols[1].data()};
    const std::array<int, 2> lengths{
        static_cast<int>(protocols[0].size()), static_cast<int>(protocols[1].size())};
    const std::unique_ptr<Xauth, void (*)(Xauth*)> cookie(
        XauGetBestAuthByAddr(
            name.family, static_cast<unsigned short>(name.address.size()), name.address.data(),
            static_cast<unsigned short>(number.size()), number.data(),
            static_cast<int>(names.size()), names.data(), lengths.data()),
        &XauDisposeAuth);
    return cookie != nullptr;
}
