#pragma once

#include "LineOutput.h"
#include "NamePatterns.h"

#include <atomic>
#include <cstdint>
#include <map>
#include <memory>
#include <string>

#include <sys/types.h>

class CallMarker;
class ThreadTracer;

/// The process-wide call tracer: which calls and messages are written, and how the lines look.
///
/// Created inactive and published once; the published one lives as long as the process. Options,
/// filters and output may change at any time. Any thread may call: the options are atomic, the
/// output's mutex guards all else. Each thread is registered under its name at its first traced
/// call.
class Tracer : public LineOutput {
public:
    Tracer();
    /// For a tracer that was never published, and for tests: unpublishes it and waits for its
    /// background thread; what is pending is lost.
    ~Tracer() override;

    /// The published tracer; null until one is set.
    static Tracer* GetInstance();
    /// Publishes the tracer, which must outlive the process's last traced call.
    static void SetInstance(Tracer* pTheTracer);

    /// Applies a configuration file and, when it switches tracing on, initializes the output. The
    /// commands act on the published tracer. A null name is a violation.
    void ReadConfigFile(const char* fileName);

    /// Switches tracing off and writes what is pending; never returns when the file cannot be
    /// opened, unlike drain().
    void FinishTracing() { finish(); }

    /// Ends tracing when the mutex cannot be had within a second, as after an open that failed on
    /// another thread: the end of the process must not wait for it.
    void giveUpWhenHeld();

    /// Record the calling thread's calls or not: an open call may still write its messages. Nothing
    /// on a thread that is not registered.
    void Enable();
    void Disable();

    /// Registers the calling thread under the name, when the thread filter permits it and it has no
    /// name yet. Never throws: a thread for which there is no memory is not registered.
    void BeginningOfThread(const char* threadName);
    /// Forgets the calling thread.
    void EndOfThread();
    /// Records a call on the calling thread, which is registered as "th_<id>" when it is not yet.
    void BeginningOfCall(CallMarker& marker);
    /// Ends a call that this tracer has recorded; never throws.
    void EndOfCall(const CallMarker& marker) noexcept;
    /// Counts a constructor or destructor; returns the class's count after it, 0 for other calls.
    int UpdateObjectCount(const CallMarker& marker);

    bool isThreadPermittedToPrint(const char* threadName);
    bool isCallPermittedToPrint(const char* methodName);
    bool isCallForbiddenToPrint(const char* methodName);
    /// Adds a pattern of names of threads that are traced.
    void TraceTheThread(const char* threadName);
    /// Adds a pattern of names of calls that are printed, or, behind a leading "-", that are not.
    void TraceTheCall(const char* className);

    /// Writes the open calls of every thread.
    void PrintStacks();
    /// Writes the number of live objects per class; nothing on a thread that is not registered.
    void PrintAllObjectsCount();

    bool isActive() const override;
    void setActive(bool active) override;
    /// Indent with "| " instead of two blanks.
    bool getTreeIndent() const { return m_treeIndent; }
    void setTreeIndent(bool treeIndent) { m_treeIndent = treeIndent; }
    /// Calls that are not printed indent too.
    bool getIndentHidden() const { return m_indentHidden; }
    void setIndentHidden(bool indentHidden) { m_indentHidden = indentHidden; }
    /// Write a line at the end of a call too.
    bool getPrintExit() const { return m_printExit; }
    void setPrintExit(bool printExit) { m_printExit = printExit; }
    /// Begin each line with the time stamp.
    bool getPrintTime() const { return m_printTime; }
    void setPrintTime(bool printTime) { m_printTime = printTime; }
    /// Write the column of object count and address.
    bool getPrintObjects() const { return m_printObjects; }
    void setPrintObjects(bool printObjects) { m_printObjects = printObjects; }
    /// The set of TraceMsgType bits that are written.
    std::uint32_t getMsgTypeMask() const { return m_msgTypeMask; }
    void setMsgTypeMask(std::uint32_t mask) { m_msgTypeMask = mask; }
    void addMsgTypes(std::uint32_t types) { m_msgTypeMask |= types; }

private:
    std::shared_ptr<FlushThread> makeFlushThread() override;
    [[noreturn]] void endWithoutFileName() override;
    static void updateTracing();
    ThreadTracer* currentThreadTracer() const;
    void enableCurrentThread(bool enabled);

    static std::atomic<Tracer*> m_Instance;

    std::atomic<bool> m_treeIndent = false;
    std::atomic<bool> m_indentHidden = false;
    std::atomic<bool> m_printExit = false;
    std::atomic<bool> m_printTime = false;
    std::atomic<bool> m_printObjects = false;
    std::map<std::string, int> m_objectCounts;
    NamePatterns m_threadPatterns;
    NamePatterns m_callPatterns;
    NamePatterns m_forbiddenPatterns; ///< without their leading "-"
    std::map<pid_t, std::unique_ptr<ThreadTracer>> m_threadTracers;
    std::atomic<std::uint32_t> m_msgTypeMask = 0;
};
