#pragma once

#include <string>
#include <string_view>
#include <vector>

/// A list of name patterns of a trace filter; matched against whole names.
///
/// "*" matches every name, "text*" those that begin with the text, "*text" those that end with it,
/// "*text*" those that contain it; any other pattern must be equal to the name. An empty list
/// matches nothing.
class NamePatterns {
public:
    void add(std::string_view pattern) { m_patterns.emplace_back(pattern); }
    bool match(std::string_view name) const;

private:
    std::vector<std::string> m_patterns;
};
