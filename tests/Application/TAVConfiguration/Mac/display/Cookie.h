#pragma once

#include <string>

/// One entry of a cookie file; as it is made, one for every display of every server.
struct Cookie {
    enum Family { INTERNET = 0, INTERNET_6 = 6, LOCAL = 256, WILD = 65535 };

    Family family = WILD;
    std::string address = {};
    std::string displayNumber = {};
    std::string protocol = "MIT-MAGIC-COOKIE-1";
};

/// The content of a cookie file with this one entry.
std::string cookieFile(const Cookie& cookie);
