#include "NestedCalls.h"

void NestedCalls::enter(const void* object)
{
    const bool isMarked = m_outer != nullptr && m_outer->getThreadTracer() != nullptr;
    if (m_depth++ < DEEPEST_MARKED && isMarked)
        m_markers.emplace_front(m_outer->getMethodName(), object);
}

void NestedCalls::leave()
{
    if (--m_depth < DEEPEST_MARKED && !m_markers.empty())
        m_markers.pop_front();
}
