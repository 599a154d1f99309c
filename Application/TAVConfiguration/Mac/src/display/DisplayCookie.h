#pragma once

#include <sys/socket.h>

/// The cookies of the user's cookie file (XAUTHORITY, else ~/.Xauthority), which root can read too.
class DisplayCookie {
public:
    /// Whether the file has a cookie that an X client sends to the server at this address: one for
    /// the display's number, and for the address, which for all addresses of this machine is its
    /// host name.
    static bool isThereFor(const sockaddr_storage& server, int displayNumber);
};
