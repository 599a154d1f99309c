#pragma once

#include "DictionaryEntries.h"

#include <cstddef>
#include <string>
#include <vector>

/// A position in a tree of dictionaries, kept on a stack of its own: the loops that go depth first
/// through a tree use it where a recursive function would use the call stack.
///
/// It changes nothing; an entry that it stands on must not be removed while it is in use.
class DictionaryCursor {
public:
    /// Goes down: next() then answers the entries of this dictionary.
    void enter(const Dictionary& dictionary);
    /// Goes back up to the dictionary that was entered before.
    void leave() { m_levels.pop_back(); }
    /// How many dictionaries are entered and not yet left.
    std::size_t depth() const { return m_levels.size(); }

    /// The next entry of the innermost dictionary, in key order; NULL when it has no more.
    const DictionaryEntries::Entry* next();

    /// The dotted path of `name` under the entry that next() answered last at the innermost level.
    std::string pathOf(const std::string& name) const;

private:
    struct Level {
        DictionaryEntries::const_iterator next;
        DictionaryEntries::const_iterator end;
    };

    std::vector<Level> m_levels;
};
