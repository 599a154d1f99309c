#pragma once

#include <cstdarg>
#include <string>

/// Formats the messages of the tracer and of the logger as printf does, up to a fixed length.
///
/// A message is formatted into 2048 bytes and, when it is longer, a second time into 20000, the NUL
/// included; one of more than 20000 characters holds 19999 of them and then " ...". A message of
/// exactly 2048 or 20000 characters loses its last one, unmarked: kept. Any thread may call it.
class MessageFormatter {
public:
    static std::string format(const char* format, va_list arguments)
        __attribute__((format(printf, 1, 0)));
    static std::string text(const char* format, ...) __attribute__((format(printf, 1, 2)));
};
