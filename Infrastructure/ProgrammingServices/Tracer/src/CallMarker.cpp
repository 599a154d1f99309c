#include "CallMarker.h"

#include "KFMutexGuard.h"
#include "Tracer.h"
#include "UnlessMemoryRunsOut.h"

bool CallMarker::traces(TraceMsgType type) const
{
    return m_printed && isTracing() && m_threadTracer->writes(type);
}

void CallMarker::updateTracing(bool (*isWanted)())
{
    // Never destroyed: a thread may switch tracing while the process ends.
    static KFMutex& s_mutex = *new KFMutex(false);
    const KFMutexGuard guard(s_mutex);
    Tracing former = s_tracing;
    if (former != Tracing::givenUp)
        s_tracing.compare_exchange_strong(former, isWanted() ? Tracing::on : Tracing::off);
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

void CallMarker::end() noexcept
{
    m_threadTracer->getTracer().EndOfCall(*this);
}
