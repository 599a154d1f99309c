#pragma once

#include "DictionaryCursor.h"
#include "NestedCalls.h"

#include <vector>

/// One comparison of a dictionary with an item, down both trees: Dictionary::equals.
class DictionaryComparison {
public:
    explicit DictionaryComparison(const CallMarker& outer);

    bool run(Dictionary& mine, const Item& theirs);

private:
    bool enter(Dictionary& mine, const Item& theirs);
    bool compareNextEntry();
    bool compareEntry(Item* mine, Item* theirs);
    void tellAndLeave(bool equal);
    void leave();

    NestedCalls m_calls;
    // The dictionaries that are being compared, outermost first: ours, and the position in theirs.
    std::vector<Dictionary*> m_mine;
    DictionaryCursor m_theirs;
};
