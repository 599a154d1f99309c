#pragma once

#include <algorithm>
#include <string_view>

/// Takes the first line off the text and returns it, without its line feed.
inline std::string_view takeLine(std::string_view& text)
{
    const std::string_view line = text.substr(0, text.find('\n'));
    text.remove_prefix(std::min(line.size() + 1, text.size()));
    return line;
}
