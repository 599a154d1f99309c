#include "CallMarker.h"

#include "Tracer.h"
#include "UnlessMemoryRunsOut.h"

bool CallMarker::traces(TraceMsgType type) const
{
    return m_printed && isTracing() && m_threadTracer->writes(type);
}

void CallMarker::begin(
    const char* className, const char* methodName, bool isConstructor, const void* object) noexcept
{
    Tracer* const tracer = Tracer::GetInstance();
    if (tracer == nullptr)
        return;
    m_className = className;
    m_methodName = methodName;
    m_isConstructor = isConstructor;
    m_object = object;
    unlessMemoryRunsOut([this, tracer] { tracer->BeginningOfCall(*this); });
}
