#include "Cookie.h"

#include <string_view>

namespace {

std::string number(std::size_t value)
{
    return {static_cast<char>(value / 256), static_cast<char>(value % 256)};
}

std::string field(std::string_view text)
{
    return number(text.size()).append(text);
}

} // namespace

std::string cookieFile(const Cookie& cookie)
{
    return number(cookie.family) + field(cookie.address) + field(cookie.displayNumber) +
           field(cookie.protocol) + field("sixteen bytes so");
}
