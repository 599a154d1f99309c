#pragma once

#include "PairedDescent.h"

/// One merge of a dictionary into another, down both trees: Dictionary::mergeDictionary.
///
/// It adds what is missing and never replaces, so that either tree may be part of the other.
class DictionaryMerge {
public:
    explicit DictionaryMerge(const CallMarker& outer) : m_outer(outer), m_pair(outer) {}

    void run(Dictionary& mine, Dictionary& theirs);

private:
    void enter(Dictionary& mine, Dictionary& theirs);
    void mergeEntry(const DictionaryEntries::Entry& theirs);

    const CallMarker& m_outer;
    PairedDescent m_pair;
};
