#pragma once

#include "ThreadTracer.h"
#include "TraceMsgType.h"

#include <atomic>

/// Marks one activation of a function: opened as its first statement, closed when the scope ends.
///
/// Every function from the tracer's users upward opens one; the texts are what a trace shows and
/// what its filters match, and must outlive the marker. A marker stays on its thread. With tracing
/// off it costs one relaxed atomic load. It never throws: a call for which there is no memory is
/// not recorded.
class CallMarker {
public:
    /// A free or static function.
    explicit CallMarker(const char* methodName) : CallMarker("", methodName, false, nullptr) {}
    /// A method of an object.
    CallMarker(const char* methodName, const void* object)
        : CallMarker("", methodName, false, object)
    {
    }
    /// A constructor (true) or destructor (false): counted per class. The method name is the class
    /// name followed by "::constructor" or "::destructor".
    CallMarker(
        const char* className, const char* methodName, bool isConstructor, const void* object)
    {
        if (isTracing())
            begin(className, methodName, isConstructor, object);
    }
    ~CallMarker()
    {
        if (m_threadTracer != nullptr)
            end();
    }

    CallMarker(const CallMarker&) = delete;
    CallMarker& operator=(const CallMarker&) = delete;

    /// Whether markers record their calls: only while the published tracer is active.
    static bool isTracing() { return s_tracing.load(std::memory_order_relaxed) == Tracing::on; }

    /// Whether a message of the type is to be written inside this call.
    bool traces(TraceMsgType type) const;

    /// The tracer of the thread that opened the marker; null when the call was not recorded.
    ThreadTracer* getThreadTracer() const { return m_threadTracer; }

    /// Whether the call is that of a constructor or destructor; only these have a class name.
    bool isCounted() const { return *m_className != '\0'; }
    const char* getClassName() const { return m_className; }
    const char* getMethodName() const { return m_methodName; }
    bool isConstructor() const { return m_isConstructor; }
    /// Null for a free or static function.
    const void* getObject() const { return m_object; }
    /// Whether the entry line was written.
    bool isPrinted() const { return m_printed; }

private:
    friend class ThreadTracer; // records the call
    friend class Tracer;       // tells when tracing changes

    enum class Tracing { off, on, givenUp };

    /// Follows a change of what `isWanted` tells; of several at once the last one to come here sees
    /// them all.
    static void updateTracing(bool (*isWanted)());
    /// Ends it for good, without waiting for an update that is under way.
    static void giveUpTracing() { s_tracing = Tracing::givenUp; }

    void begin(
        const char* className, const char* methodName, bool isConstructor,
        const void* object) noexcept;
    void end() noexcept;

    static inline std::atomic<Tracing> s_tracing = Tracing::off;

    const char* m_className = "";
    const char* m_methodName = "";
    ThreadTracer* m_threadTracer = nullptr;
    bool m_printed = false;
    bool m_isConstructor = false;
    const void* m_object = nullptr;
};

/// Writes a message inside the call of `marker`: TAV_TRACE(marker, TraceMsgType::D, "key %s", key).
/// A macro, so that the arguments are not evaluated when nothing is to be written.
#define TAV_TRACE(marker, type, ...)                                                               \
    do {                                                                                           \
        if ((marker).traces(type))                                                                 \
            (marker).getThreadTracer()->PrintMsg(type, __VA_ARGS__);                               \
    } while (false)
