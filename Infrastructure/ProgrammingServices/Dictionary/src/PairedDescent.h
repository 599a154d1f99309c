#pragma once

#include "Descent.h"
#include "DictionaryEntries.h"

/// A position in two trees of dictionaries at once, ours and theirs, with the calls of ours.
///
/// Ours may be changed, but for the entries that lead to where it stands; of theirs none may be
/// removed.
class PairedDescent {
public:
    explicit PairedDescent(const CallMarker& outer) : m_levels(&outer) {}

    /// Goes down in ours.
    void enter(Dictionary& mine) { m_levels.enter(&mine, {&DictionaryEntries::of(mine)}); }
    /// Goes down in theirs beside it: next() then answers the entries of this dictionary.
    void enterBeside(const Dictionary& theirs);
    /// Goes back up in both.
    void leave() { m_levels.leave(); }
    bool isOver() const { return m_levels.depth() == 0; }

    /// The next entry of their innermost dictionary, in key order; null when it has no more.
    const DictionaryEntries::Entry* next();
    /// The entries of the innermost dictionaries.
    DictionaryEntries& mine() const { return *m_levels.here().mine; }
    const DictionaryEntries& theirs() const { return *m_levels.here().theirs; }

private:
    struct Level {
        DictionaryEntries* mine = nullptr;
        const DictionaryEntries* theirs = nullptr;
        DictionaryEntries::const_iterator next = {};
    };

    Descent<Level> m_levels;
};
