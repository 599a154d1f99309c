#include "DictionaryWalk.h"

DictionaryWalk::DictionaryWalk(
    const Dictionary& root, const CallMarker& outer, const char* signature, Leaves leaves)
    : m_here(&root), m_leaves(leaves), m_calls(outer, signature)
{
}

Dictionary* DictionaryWalk::next()
{
    m_cursor.enter(*m_here);
    return advance();
}

Dictionary* DictionaryWalk::nextBeside()
{
    m_calls.leave();
    return advance();
}

Dictionary* DictionaryWalk::advance()
{
    while (m_cursor.depth() > 0) {
        const DictionaryEntries::Entry* const entry = m_cursor.next();
        if (entry == nullptr) {
            m_cursor.leave();
            m_calls.leave();
            continue;
        }
        if (Dictionary* const child = DictionaryEntries::dictionaryIn(*entry)) {
            m_calls.enter(child);
            m_here = child;
            return child;
        }
        if (m_leaves == Leaves::told)
            TAV_TRACE(m_calls.marker(), TraceMsgType::D, "child is not a dictionary");
    }
    return nullptr;
}
