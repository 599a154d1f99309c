#include "DictionaryMerge.h"

#include "Dictionary.h"

DictionaryMerge::DictionaryMerge(const CallMarker& outer)
    : m_calls(outer, "void Dictionary::mergeDictionary(Dictionary&)")
{
}

void DictionaryMerge::run(Dictionary& mine, Dictionary& theirs)
{
    enter(mine, theirs);
    while (!m_mine.empty()) {
        if (const DictionaryEntries::Entry* const entry = m_theirs.next())
            mergeEntry(*entry);
        else
            leave();
    }
}

void DictionaryMerge::enter(Dictionary& mine, Dictionary& theirs)
{
    TAV_TRACE(m_calls.marker(), TraceMsgType::D, "merging under %s", theirs.toString("").c_str());
    m_mine.push_back(&mine);
    m_theirs.enter(theirs);
}

void DictionaryMerge::mergeEntry(const DictionaryEntries::Entry& theirs)
{
    const char* const key = theirs.first.c_str();
    TAV_TRACE(m_calls.marker(), TraceMsgType::D, "Looking for merge key %s", key);
    DictionaryEntries& entries = DictionaryEntries::of(*m_mine.back());
    const DictionaryEntries::Entry* const mine = entries.find(theirs.first);
    if (mine == nullptr) {
        entries.store(theirs.first, DictionaryEntries::cloneOf(theirs));
        return;
    }
    Dictionary* const theirChild = DictionaryEntries::dictionaryIn(theirs);
    if (theirChild == nullptr)
        return;
    Dictionary* const myChild = DictionaryEntries::dictionaryIn(*mine);
    if (myChild == nullptr) {
        TAV_TRACE(m_calls.marker(), TraceMsgType::W, "incompatible structure for key %s", key);
        return;
    }
    m_calls.enter(myChild);
    enter(*myChild, *theirChild);
}

void DictionaryMerge::leave()
{
    m_mine.pop_back();
    m_theirs.leave();
    m_calls.leave();
}
