#include "DictionaryComparison.h"

#include "Dictionary.h"

DictionaryComparison::DictionaryComparison(const CallMarker& outer)
    : m_calls(outer, "bool Dictionary::equals(const Item&)")
{
}

bool DictionaryComparison::run(Dictionary& mine, const Item& theirs)
{
    bool equal = enter(mine, theirs);
    while (equal && !m_mine.empty())
        equal = compareNextEntry();
    while (!m_mine.empty())
        tellAndLeave(false);
    return equal;
}

// A comparison that fails here, or for a missing key, has told why and says no result of its own.
bool DictionaryComparison::enter(Dictionary& mine, const Item& theirs)
{
    // getAsDictionary() is not const, though nothing is changed through it here.
    Dictionary* const other = const_cast<Item&>(theirs).getAsDictionary();
    if (other == nullptr) {
        TAV_TRACE(m_calls.marker(), TraceMsgType::D, "Other is not a dictionary");
        m_calls.leave();
        return false;
    }
    if (DictionaryEntries::of(mine).size() != DictionaryEntries::of(*other).size()) {
        TAV_TRACE(m_calls.marker(), TraceMsgType::D, "Dictionary have different sizes");
        m_calls.leave();
        return false;
    }
    m_mine.push_back(&mine);
    m_theirs.enter(*other);
    return true;
}

bool DictionaryComparison::compareNextEntry()
{
    const DictionaryEntries::Entry* const theirs = m_theirs.next();
    if (theirs == nullptr) {
        tellAndLeave(true);
        return true;
    }
    const DictionaryEntries::Entry* const mine =
        DictionaryEntries::of(*m_mine.back()).find(theirs->first);
    if (mine == nullptr) {
        TAV_TRACE(m_calls.marker(), TraceMsgType::D, "Key not found %s", theirs->first.c_str());
        leave();
        return false;
    }
    return compareEntry(mine->second.get(), theirs->second.get());
}

bool DictionaryComparison::compareEntry(Item* mine, Item* theirs)
{
    if (mine == nullptr || theirs == nullptr)
        return mine == theirs;
    Dictionary* const child = mine->getAsDictionary();
    if (child == nullptr)
        return mine->equals(*theirs);
    m_calls.enter(child);
    return enter(*child, *theirs);
}

void DictionaryComparison::tellAndLeave(bool equal)
{
    TAV_TRACE(m_calls.marker(), TraceMsgType::D, "equals returns %d", equal);
    leave();
}

void DictionaryComparison::leave()
{
    m_mine.pop_back();
    m_theirs.leave();
    m_calls.leave();
}
