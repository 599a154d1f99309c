#include "DictionaryComparison.h"

#include "Dictionary.h"

bool DictionaryComparison::run(Dictionary& mine, const Item& theirs)
{
    bool equal = enter(mine, theirs);
    while (equal && !m_pair.isOver())
        equal = compareNextEntry();
    while (!m_pair.isOver())
        tellAndLeave(false);
    return equal;
}

// A comparison that fails here, or for a missing key, has told why and says no result of its own.
bool DictionaryComparison::enter(Dictionary& mine, const Item& theirs)
{
    m_pair.enter(mine);
    // getAsDictionary() is not const, though nothing is changed through it here.
    const Dictionary* const other = const_cast<Item&>(theirs).getAsDictionary();
    if (other == nullptr) {
        TAV_TRACE(m_outer, TraceMsgType::D, "Other is not a dictionary");
        m_pair.leave();
        return false;
    }
    m_pair.enterBeside(*other);
    if (m_pair.mine().size() != m_pair.theirs().size()) {
        TAV_TRACE(m_outer, TraceMsgType::D, "Dictionary have different sizes");
        m_pair.leave();
        return false;
    }
    return true;
}

bool DictionaryComparison::compareNextEntry()
{
    const DictionaryEntries::Entry* const theirs = m_pair.next();
    if (theirs == nullptr) {
        tellAndLeave(true);
        return true;
    }
    const DictionaryEntries::Entry* const mine = m_pair.mine().find(theirs->first);
    if (mine == nullptr) {
        TAV_TRACE(m_outer, TraceMsgType::D, "Key not found %s", theirs->first.c_str());
        m_pair.leave();
        return false;
    }
    return compareEntry(mine->second.get(), theirs->second.get());
}

bool DictionaryComparison::compareEntry(Item* mine, Item* theirs)
{
    if (mine == nullptr || theirs == nullptr)
        return mine == theirs;
    Dictionary* const child = mine->getAsDictionary();
    return child == nullptr ? mine->equals(*theirs) : enter(*child, *theirs);
}

void DictionaryComparison::tellAndLeave(bool equal)
{
    TAV_TRACE(m_outer, TraceMsgType::D, "equals returns %d", equal);
    m_pair.leave();
}
