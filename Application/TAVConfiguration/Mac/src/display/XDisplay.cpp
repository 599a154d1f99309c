#include "XDisplay.h"

#include "CallMarker.h"
#include "DisplayCookie.h"
#include "XcbReply.h"

#include <cstdint>
#include <string_view>

#include <sys/socket.h>
#include <xcb/xcb.h>

namespace {

/// The family of the access list's entry for everybody on this machine, which xcb does not name.
constexpr std::uint8_t FAMILY_LOCAL_HOST = 252;
constexpr std::string_view ROOT_USER("localuser\0root", 14);

bool isRoot(xcb_host_t* host)
{
    const std::string_view address(
        reinterpret_cast<const char*>(xcb_host_address(host)), host->address_len);
    return host->family == FAMILY_LOCAL_HOST ||
           (host->family == XCB_FAMILY_SERVER_INTERPRETED && address == ROOT_USER);
}

} // namespace

XDisplay::XDisplay() : m_connection(nullptr, &xcb_disconnect)
{
    CallMarker marker("XDisplay", "XDisplay::constructor", true, this);
    m_connection.reset(xcb_connect(nullptr, nullptr));
}

XDisplay::~XDisplay()
{
    CallMarker marker("XDisplay", "XDisplay::destructor", false, this);
}

bool XDisplay::isOpen() const
{
    CallMarker marker("XDisplay::isOpen", this);
    return xcb_connection_has_error(m_connection.get()) == 0;
}

bool XDisplay::admitsRoot() const
{
    CallMarker marker("XDisplay::admitsRoot", this);
    xcb_connection_t* const server = m_connection.get();
    const XcbReply<xcb_list_hosts_reply_t> hosts(
        xcb_list_hosts_reply(server, xcb_list_hosts(server), nullptr));
    if (hosts == nullptr)
        return false;
    // Who came in without a cookie past an empty list is on a server that admits every local user.
    bool admits = hosts->mode == XCB_ACCESS_CONTROL_DISABLE || hosts->hosts_len == 0;
    for (auto host = xcb_list_hosts_hosts_iterator(hosts.get()); host.rem > 0; xcb_host_next(&host))
        admits = admits || isRoot(host.data);
    return admits;
}

bool XDisplay::hasCookie() const
{
    CallMarker marker("XDisplay::hasCookie", this);
    sockaddr_storage server{};
    socklen_t size = sizeof server;
    char* host = nullptr;
    int number = 0;
    if (xcb_parse_display(nullptr, &host, &number, nullptr) == 0)
        return false;
    const std::unique_ptr<char, XcbFree> hostOwner(host);
    return getpeername(
               xcb_get_file_descriptor(m_connection.get()), reinterpret_cast<sockaddr*>(&server),
               &size) == 0 &&
           DisplayCookie::isThereFor(server, number);
}

std::string XDisplay::rootProperty(const std::string& name) const
{
    CallMarker marker("XDisplay::rootProperty", this);
    xcb_connection_t* const server = m_connection.get();
    const XcbReply<xcb_intern_atom_reply_t> atom(xcb_intern_atom_reply(
        server, xcb_intern_atom(server, 1, static_cast<std::uint16_t>(name.size()), name.c_str()),
        nullptr));
    if (atom == nullptr || atom->atom == XCB_ATOM_NONE)
        return {};
    constexpr std::uint32_t MAX_WORDS = 1024;
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(server)).data->root;
    const XcbReply<xcb_get_property_reply_t> property(xcb_get_property_reply(
        server, xcb_get_property(server, 0, root, atom->atom, XCB_ATOM_STRING, 0, MAX_WORDS),
        nullptr));
    if (property == nullptr || property->format != 8)
        return {};
    return {
        static_cast<const char*>(xcb_get_property_value(property.get())),
        static_cast<std::size_t>(xcb_get_property_value_length(property.get()))};
}
