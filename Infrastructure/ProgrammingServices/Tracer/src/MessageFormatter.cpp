#include "MessageFormatter.h"

#include <array>
#include <cstdio>
#include <cstring>

namespace {

constexpr int SHORT_SIZE = 2048;
constexpr int LONG_SIZE = 20000;

// Strictly greater: a text of exactly `size` characters lacks its last one and counts as whole.
bool isCut(int length, int size)
{
    return length < 0 || length > size;
}

__attribute__((format(printf, 1, 0))) std::string formatLong(const char* format, va_list arguments)
{
    std::string text(LONG_SIZE, '\0');
    const int length = std::vsnprintf(text.data(), LONG_SIZE, format, arguments);
    text.resize(std::strlen(text.c_str()));
    if (isCut(length, LONG_SIZE))
        text += " ...";
    return text;
}

} // namespace

std::string MessageFormatter::format(const char* format, va_list arguments)
{
    va_list secondArguments;
    va_copy(secondArguments, arguments);
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-member-init): every message would pay for 2 KB
    std::array<char, SHORT_SIZE> area;
    const int length = std::vsnprintf(area.data(), area.size(), format, arguments);
    std::string text =
        isCut(length, SHORT_SIZE) ? formatLong(format, secondArguments) : area.data();
    va_end(secondArguments);
    return text;
}

std::string MessageFormatter::text(const char* format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    std::string text = MessageFormatter::format(format, arguments);
    va_end(arguments);
    return text;
}
