#include "NamePatterns.h"

#include <algorithm>

namespace {

bool matches(std::string_view pattern, std::string_view name)
{
    if (pattern == "*")
        return true;
    const bool openStart = pattern.starts_with('*');
    const bool openEnd = pattern.ends_with('*');
    if (openStart)
        pattern.remove_prefix(1);
    if (openEnd)
        pattern.remove_suffix(1);
    if (openStart && openEnd)
        return name.find(pattern) != std::string_view::npos;
    if (openEnd)
        return name.starts_with(pattern);
    if (openStart)
        return name.ends_with(pattern);
    return name == pattern;
}

} // namespace

bool NamePatterns::match(std::string_view name) const
{
    return std::any_of(m_patterns.begin(), m_patterns.end(), [name](const std::string& pattern) {
        return matches(pattern, name);
    });
}
