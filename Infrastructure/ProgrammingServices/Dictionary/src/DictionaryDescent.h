#pragma once

#include "Descent.h"
#include "DictionaryEntries.h"

#include <string>

/// A position in a tree of dictionaries.
///
/// It changes nothing; an entry that it stands on must not be removed while it is in use.
class DictionaryDescent {
public:
    /// See NestedCalls for the marker.
    explicit DictionaryDescent(const CallMarker* outer) : m_levels(outer) {}

    /// Goes down: next() then answers the entries of this dictionary.
    void enter(const Dictionary& dictionary);
    /// Goes back up to the dictionary that was entered before.
    void leave() { m_levels.leave(); }
    /// How many dictionaries are entered and not yet left.
    std::size_t depth() const { return m_levels.depth(); }

    /// The next entry of the innermost dictionary, in key order; null when it has no more.
    const DictionaryEntries::Entry* next();
    /// Starts over with the entries of the innermost dictionary, which may have changed.
    void rewind() { m_levels.here().next = m_levels.here().entries->begin(); }

    /// The dotted path of a name in the innermost dictionary.
    std::string pathOf(const std::string& name) const;

private:
    struct Level {
        const DictionaryEntries* entries;
        DictionaryEntries::const_iterator next;
    };

    Descent<Level> m_levels;
};
