#include "NestedCalls.h"

NestedCalls::NestedCalls(const CallMarker& outer, const char* signature)
    : m_outer(outer), m_signature(signature)
{
}

void NestedCalls::enter(const void* object)
{
    if (m_depth++ < s_deepestMarked && m_outer.getThreadTracer() != nullptr)
        m_markers.emplace_front(m_signature, object);
}

void NestedCalls::leave()
{
    if (m_depth == 0)
        return;
    if (--m_depth < s_deepestMarked && !m_markers.empty())
        m_markers.pop_front();
}

const CallMarker& NestedCalls::marker() const
{
    return m_markers.empty() ? m_outer : m_markers.front();
}
