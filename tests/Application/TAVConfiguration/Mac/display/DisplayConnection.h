#pragma once

#include "XcbReply.h"

#include <string_view>

#include <xcb/xcb.h>

/// A test's connection to the X server of DISPLAY; the cookies have to be set.
class DisplayConnection {
public:
    /// Throws std::runtime_error where the server does not let this process in.
    DisplayConnection();
    /// Returns once the server has done what it was asked for.
    ~DisplayConnection();

    DisplayConnection(const DisplayConnection&) = delete;
    DisplayConnection& operator=(const DisplayConnection&) = delete;

    xcb_connection_t* server() const { return m_server; }
    xcb_window_t root() const;
    xcb_atom_t atom(std::string_view name) const;

private:
    xcb_connection_t* m_server;
};
