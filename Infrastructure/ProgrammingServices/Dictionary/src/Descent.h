#pragma once

#include "NestedCalls.h"

#include <cstddef>
#include <vector>

/// The way down a tree of dictionaries, kept on a stack of its own: the loops that go depth first
/// through a tree use it where a recursive function would use the call stack. Each level has what
/// its user knows of the dictionary there, and its call.
///
/// The innermost level stands apart from those above it, so that one level allocates nothing.
template<typename Level>
class Descent {
public:
    /// See NestedCalls for the marker.
    explicit Descent(const CallMarker* outer) : m_calls(outer) {}

    /// Goes down into the call of the dictionary; the outermost one belongs to the outer call.
    void enter(const void* dictionary, const Level& level)
    {
        if (m_depth++ > 0) {
            m_calls.enter(dictionary);
            m_above.push_back(m_here);
        }
        m_here = level;
    }

    /// Goes back up to the level that was entered before.
    void leave()
    {
        if (--m_depth > 0) {
            m_calls.leave();
            m_here = m_above.back();
            m_above.pop_back();
        }
    }

    /// How many levels are entered and not yet left.
    std::size_t depth() const { return m_depth; }
    /// The innermost level, while there is one.
    Level& here() { return m_here; }
    const Level& here() const { return m_here; }
    /// Those above it, outermost first.
    const std::vector<Level>& above() const { return m_above; }

private:
    NestedCalls m_calls;
    std::size_t m_depth = 0;
    Level m_here{};
    std::vector<Level> m_above;
};
