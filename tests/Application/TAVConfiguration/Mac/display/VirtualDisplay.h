#pragma once

#include "Pipe.h"

#include <string>
#include <vector>

#include <sys/types.h>

/// An X server without a screen, for the time of a test.
class VirtualDisplay {
public:
    explicit VirtualDisplay(const std::vector<std::string>& options = {});
    ~VirtualDisplay();

    VirtualDisplay(const VirtualDisplay&) = delete;
    VirtualDisplay& operator=(const VirtualDisplay&) = delete;

    /// What DISPLAY has to be.
    const std::string& name() const { return m_name; }

    /// Puts a local user on the access list. DISPLAY and the cookies have to be set.
    static void admit(const std::string& user);
    /// Puts everybody on this machine on the access list. DISPLAY and the cookies have to be set.
    static void admitLocalUsers();
    /// Gives the root window a text property. DISPLAY and the cookies have to be set.
    static void setRootProperty(const std::string& name, const std::string& value);

private:
    VirtualDisplay(const std::vector<std::string>& options, Pipe ready);

    pid_t m_server;
    std::string m_name;
};
