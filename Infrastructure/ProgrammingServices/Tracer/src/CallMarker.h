#pragma once

#include "ThreadTracer.h"
#include "TraceMsgType.h"

/// Marks one activation of a function: opened as its first statement, closed when the scope ends.
///
/// Every function from the tracer's users upward opens one; the texts are what a trace shows and
/// what its filters match. With tracing off a marker costs one relaxed atomic load.
class CallMarker {
public:
    /// A free or static function.
    explicit CallMarker(const char* methodName);
    /// A method of an object.
    CallMarker(const char* methodName, const void* object);
    /// A constructor (true) or destructor (false): counted per class. The method name is the class
    /// name followed by "::constructor" or "::destructor".
    CallMarker(
        const char* className, const char* methodName, bool isConstructor, const void* object);
    ~CallMarker();

    CallMarker(const CallMarker&) = delete;
    CallMarker& operator=(const CallMarker&) = delete;

    /// Whether a message of the type is to be written inside this call.
    bool traces(TraceMsgType type) const;

    /// The tracer of the thread that opened the marker; null when the call was not recorded.
    ThreadTracer* getThreadTracer() const { return m_threadTracer; }

private:
    ThreadTracer* m_threadTracer = nullptr;
};

/// Writes a message inside the call of `marker`: TAV_TRACE(marker, TraceMsgType::D, "key %s", key).
/// A macro, so that the arguments are not evaluated when nothing is to be written.
#define TAV_TRACE(marker, type, ...)                                                               \
    do {                                                                                           \
        if ((marker).traces(type))                                                                 \
            (marker).getThreadTracer()->PrintMsg(type, __VA_ARGS__);                               \
    } while (false)
