#include "DictionaryWalk.h"

DictionaryWalk::DictionaryWalk(const Dictionary& root, const CallMarker& outer, Leaves leaves)
    : m_outer(outer), m_leaves(leaves), m_descent(&outer)
{
    m_descent.enter(root);
}

Dictionary* DictionaryWalk::next()
{
    m_descent.rewind();
    return advance();
}

Dictionary* DictionaryWalk::nextBeside()
{
    m_descent.leave();
    return advance();
}

Dictionary* DictionaryWalk::advance()
{
    while (m_descent.depth() > 0) {
        const DictionaryEntries::Entry* const entry = m_descent.next();
        if (entry == nullptr) {
            m_descent.leave();
            continue;
        }
        if (Dictionary* const child = DictionaryEntries::dictionaryIn(*entry)) {
            m_descent.enter(*child);
            return child;
        }
        if (m_leaves == Leaves::told)
            TAV_TRACE(m_outer, TraceMsgType::D, "child is not a dictionary");
    }
    return nullptr;
}
