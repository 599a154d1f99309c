#pragma once

#include <string>
#include <string_view>

/// A shell pattern over byte strings: "*" stands for any bytes, "/" included, "?" for one byte;
/// every other character stands for itself.
class WildcardPattern {
public:
    explicit WildcardPattern(std::string pattern);

    /// Whether the pattern fits the whole text. Takes at most the product of both lengths.
    bool matches(std::string_view text) const;

private:
    std::string m_pattern;
};
