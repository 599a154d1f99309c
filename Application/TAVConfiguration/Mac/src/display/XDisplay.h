#pragma once

#include <memory>
#include <string>

struct xcb_connection_t;

/// A connection to the X server that DISPLAY names, for the questions that have to be answered
/// before the window system of the application itself starts.
class XDisplay {
public:
    XDisplay();
    ~XDisplay();

    XDisplay(const XDisplay&) = delete;
    XDisplay& operator=(const XDisplay&) = delete;

    /// False when there is no such server, or it refuses this user; nothing else answers then.
    bool isOpen() const;
    /// Whether the server, which has admitted this user without a cookie, would admit root so too.
    bool admitsRoot() const;
    /// Whether the user's cookie file has a cookie for the server, with which root would come in.
    bool hasCookie() const;
    /// A text property of the first root window; empty when it has none.
    std::string rootProperty(const std::string& name) const;

private:
    std::unique_ptr<xcb_connection_t, void (*)(xcb_connection_t*)> m_connection;
};
