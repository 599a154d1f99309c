#pragma once

#include "PairedDescent.h"

/// One comparison of a dictionary with an item, down both trees: Dictionary::equals.
class DictionaryComparison {
public:
    explicit DictionaryComparison(const CallMarker& outer) : m_outer(outer), m_pair(outer) {}

    bool run(Dictionary& mine, const Item& theirs);

private:
    bool enter(Dictionary& mine, const Item& theirs);
    bool compareNextEntry();
    bool compareEntry(Item* mine, Item* theirs);
    void tellAndLeave(bool equal);

    const CallMarker& m_outer;
    PairedDescent m_pair;
};
