#pragma once

#include "DictionaryCursor.h"
#include "NestedCalls.h"

#include <vector>

/// One merge of a dictionary into another, down both trees: Dictionary::mergeDictionary.
///
/// It adds what is missing and never replaces, so that either tree may be part of the other.
class DictionaryMerge {
public:
    explicit DictionaryMerge(const CallMarker& outer);

    void run(Dictionary& mine, Dictionary& theirs);

private:
    void enter(Dictionary& mine, Dictionary& theirs);
    void mergeEntry(const DictionaryEntries::Entry& theirs);
    void leave();

    NestedCalls m_calls;
    // The dictionaries that are being merged, outermost first: ours, and the position in theirs.
    std::vector<Dictionary*> m_mine;
    DictionaryCursor m_theirs;
};
