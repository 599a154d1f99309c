#pragma once

#include <string_view>

/// The keys of a dotted path, from the first to the last; the path's text must outlive it.
///
/// There is no escaping: a path always splits at its next full stop, and two in a row hold an empty
/// key between them.
class PathKeys {
public:
    explicit PathKeys(std::string_view path) : m_rest(path) {}

    std::string_view head() const { return m_rest.substr(0, m_rest.find('.')); }
    /// What is left of the path, the head included.
    std::string_view rest() const { return m_rest; }
    bool isLast() const { return m_rest.find('.') == std::string_view::npos; }
    /// Drops the head; only while it is not the last key.
    void next() { m_rest.remove_prefix(m_rest.find('.') + 1); }

private:
    std::string_view m_rest;
};
