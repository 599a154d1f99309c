#include "DisplayConnection.h"

#include <cstdint>
#include <stdexcept>

DisplayConnection::DisplayConnection() : m_server(xcb_connect(nullptr, nullptr))
{
    if (xcb_connection_has_error(m_server) == 0)
        return;
    xcb_disconnect(m_server);
    throw std::runtime_error("the display cannot be opened");
}

DisplayConnection::~DisplayConnection()
{
    const XcbReply<xcb_get_input_focus_reply_t> answer(
        xcb_get_input_focus_reply(m_server, xcb_get_input_focus(m_server), nullptr));
    xcb_disconnect(m_server);
}

xcb_window_t DisplayConnection::root() const
{
    return xcb_setup_roots_iterator(xcb_get_setup(m_server)).data->root;
}

xcb_atom_t DisplayConnection::atom(std::string_view name) const
{
    const XcbReply<xcb_intern_atom_reply_t> answer(xcb_intern_atom_reply(
        m_server,
        xcb_intern_atom(m_server, 0, static_cast<std::uint16_t>(name.size()), name.data()),
        nullptr));
    return answer->atom;
}
