#include "DictionaryMerge.h"

#include "Dictionary.h"

void DictionaryMerge::run(Dictionary& mine, Dictionary& theirs)
{
    enter(mine, theirs);
    while (!m_pair.isOver()) {
        if (const DictionaryEntries::Entry* const entry = m_pair.next())
            mergeEntry(*entry);
        else
            m_pair.leave();
    }
}

void DictionaryMerge::enter(Dictionary& mine, Dictionary& theirs)
{
    m_pair.enter(mine);
    TAV_TRACE(m_outer, TraceMsgType::D, "merging under %s", theirs.toString("").c_str());
    m_pair.enterBeside(theirs);
}

void DictionaryMerge::mergeEntry(const DictionaryEntries::Entry& theirs)
{
    const char* const key = theirs.first.c_str();
    TAV_TRACE(m_outer, TraceMsgType::D, "Looking for merge key %s", key);
    const DictionaryEntries::Entry* const mine = m_pair.mine().find(theirs.first);
    if (mine == nullptr) {
        m_pair.mine().store(theirs.first, DictionaryEntries::cloneOf(theirs));
        return;
    }
    Dictionary* const theirChild = DictionaryEntries::dictionaryIn(theirs);
    if (theirChild == nullptr)
        return;
    if (Dictionary* const myChild = DictionaryEntries::dictionaryIn(*mine))
        enter(*myChild, *theirChild);
    else
        TAV_TRACE(m_outer, TraceMsgType::W, "incompatible structure for key %s", key);
}
