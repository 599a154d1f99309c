#include "CallMarker.h"

CallMarker::CallMarker(const char* /*methodName*/) {}

CallMarker::CallMarker(const char* /*methodName*/, const void* /*object*/) {}

CallMarker::CallMarker(
    const char* /*className*/, const char* /*methodName*/, bool /*isConstructor*/,
    const void* /*object*/)
{
}

CallMarker::~CallMarker() = default;

bool CallMarker::traces(TraceMsgType /*type*/) const
{
    return m_threadTracer != nullptr;
}
