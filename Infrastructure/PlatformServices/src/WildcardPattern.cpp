#include "WildcardPattern.h"

#include <utility>

WildcardPattern::WildcardPattern(std::string pattern) : m_pattern(std::move(pattern)) {}

bool WildcardPattern::matches(std::string_view text) const
{
    constexpr std::size_t none = std::string::npos;
    std::size_t inPattern = 0;
    std::size_t inText = 0;
    std::size_t lastStar = none;
    std::size_t starEnd = 0; // where the text of the last star ends so far
    while (inText < text.size()) {
        if (inPattern < m_pattern.size() && m_pattern[inPattern] == '*') {
            lastStar = inPattern++;
            starEnd = inText;
        } else if (
            inPattern < m_pattern.size() &&
            (m_pattern[inPattern] == '?' || m_pattern[inPattern] == text[inText])) {
            ++inPattern;
            ++inText;
        } else if (lastStar != none) {
            inPattern = lastStar + 1;
            inText = ++starEnd;
        } else {
            return false;
        }
    }
    return m_pattern.find_first_not_of('*', inPattern) == none;
}
