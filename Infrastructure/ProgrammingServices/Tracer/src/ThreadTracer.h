#pragma once

#include "TraceMsgType.h"

#include <string>
#include <vector>

class CallMarker;
class Tracer;

/// Writes the trace lines of one thread and keeps its stack of open calls.
///
/// Owned by the tracer and used by its own thread, except that any thread may print the stack; so
/// the stack changes under the tracer's mutex alone, which the tracer holds when it tells of a call
/// or has the stack printed.
class ThreadTracer {
public:
    ThreadTracer(Tracer& tracer, std::string threadName);
    /// Calls that are still open are forgotten by their markers.
    virtual ~ThreadTracer();

    ThreadTracer(const ThreadTracer&) = delete;
    ThreadTracer& operator=(const ThreadTracer&) = delete;

    Tracer& getTracer() const { return m_tracer; }
    void setEnabled(bool enabled) { m_enabled = enabled; }

    /// Records the call and writes its entry line, unless the filters hide it. Kept: a hidden call
    /// is counted and pushed all the same.
    void BeginningOfCall(CallMarker& marker);

    /// Writes the exit line of the innermost call, the marker's, and removes it. Kept: the line is
    /// one unit deeper than the entry line. Never throws.
    void EndOfCall(const CallMarker& marker) noexcept;

    /// Whether the tracer's mask has the type.
    bool writes(TraceMsgType type) const;

    /// Writes one message line inside the current call; never throws.
    void PrintMsg(TraceMsgType type, const char* format, ...) __attribute__((format(printf, 3, 4)));

    /// Writes the open calls, innermost first. Kept: each line has the id of the thread that prints
    /// and the name of the thread whose calls they are.
    void PrintStack() const;

private:
    std::string lineStart() const;
    std::string threadColumns() const;
    std::string indentation() const;
    void printEntry(const CallMarker& marker, int count) const;
    void printExit(const CallMarker& marker) const;

    Tracer& m_tracer;
    bool m_enabled = true;
    std::string m_threadName;
    std::vector<CallMarker*> m_callStack; ///< the innermost call last
};
