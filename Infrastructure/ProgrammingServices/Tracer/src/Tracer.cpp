#include "Tracer.h"

#include "CallMarker.h"
#include "Contract.h"
#include "MessageFormatter.h"
#include "ThreadTracer.h"
#include "TracerConfigFileParser.h"
#include "TracerFlushThread.h"

#include <utility>

#include <unistd.h>

namespace {

constexpr const char* c_unit = "Infrastructure/ProgrammingServices/Tracer/src/Tracer";

} // namespace

std::atomic<Tracer*> Tracer::m_Instance = nullptr;

Tracer::Tracer() : LineOutput("Tracer") {}

Tracer::~Tracer()
{
    Tracer* published = this;
    if (!m_Instance.compare_exchange_strong(published, nullptr)) {
        // The thread writes for the tracer that is published now, and so it goes on.
        static_cast<void>(m_flushThread.release());
        return;
    }
    CallMarker::s_tracing = false;
    if (m_flushThread)
        m_flushThread->stop();
}

Tracer* Tracer::GetInstance()
{
    return m_Instance;
}

// Kept: the post-condition is checked on the null branch alone.
void Tracer::SetInstance(Tracer* pTheTracer)
{
    Contract::require(pTheTracer != nullptr, "pTheTracer != NULL", c_unit, 45);
    if (pTheTracer == nullptr) {
        Contract::ensure(m_Instance != nullptr, "m_Instance != NULL", c_unit, 47);
        return;
    }
    m_Instance = pTheTracer;
    CallMarker::s_tracing = pTheTracer->isActive();
}

void Tracer::ReadConfigFile(const char* fileName)
{
    Contract::require(fileName != nullptr, "fileName != NULL", c_unit, 56);
    if (fileName == nullptr)
        return;
    TracerConfigFileParser(fileName).parse();
    if (isActive())
        Initialize();
}

void Tracer::Initialize()
{
    requireFileName("please call TRACE_SET_FILE_NAME(\"baseFileName\")");
    if (isSynchronous() || m_flushThread != nullptr)
        return;
    m_flushThread = std::make_unique<TracerFlushThread>();
    m_flushThread->start();
}

void Tracer::FinishTracing()
{
    m_mutex.acquire();
    setActive(false);
    writeAllPending();
    m_mutex.release();
}

void Tracer::giveUpWhenHeld()
{
    if (acquireInBoundedTime())
        m_mutex.release();
    else
        CallMarker::s_tracing = false;
}

void Tracer::Enable()
{
    enableCurrentThread(true);
}

void Tracer::Disable()
{
    enableCurrentThread(false);
}

void Tracer::BeginningOfThread(const char* threadName)
{
    Contract::require(threadName != nullptr, "threadName != NULL", c_unit, 101);
    m_mutex.acquire();
    if (threadName != nullptr && isThreadPermittedToPrint(threadName))
        m_threadTracers.try_emplace(gettid(), std::make_unique<ThreadTracer>(*this, threadName));
    m_mutex.release();
}

void Tracer::EndOfThread()
{
    m_mutex.acquire();
    m_threadTracers.erase(gettid());
    m_mutex.release();
}

void Tracer::BeginningOfCall(CallMarker& marker)
{
    m_mutex.acquire();
    ThreadTracer* threadTracer = currentThreadTracer();
    if (threadTracer == nullptr) {
        BeginningOfThread(MessageFormatter::text("th_%-d", gettid()).c_str());
        threadTracer = currentThreadTracer();
    }
    if (threadTracer != nullptr)
        threadTracer->BeginningOfCall(marker);
    m_mutex.release();
}

int Tracer::UpdateObjectCount(const CallMarker& marker)
{
    if (!marker.isCounted())
        return 0;
    m_mutex.acquire();
    const int count = m_objectCounts[marker.getClassName()] += marker.isConstructor() ? 1 : -1;
    m_mutex.release();
    return count;
}

bool Tracer::isThreadPermittedToPrint(const char* threadName)
{
    m_mutex.acquire();
    const bool permitted = m_threadPatterns.match(threadName);
    m_mutex.release();
    return permitted;
}

bool Tracer::isCallPermittedToPrint(const char* methodName)
{
    m_mutex.acquire();
    const bool permitted = m_callPatterns.match(methodName);
    m_mutex.release();
    return permitted;
}

bool Tracer::isCallForbiddenToPrint(const char* methodName)
{
    m_mutex.acquire();
    const bool forbidden = m_forbiddenPatterns.match(methodName);
    m_mutex.release();
    return forbidden;
}

void Tracer::TraceTheThread(const char* threadName)
{
    Contract::require(threadName != nullptr, "threadName != NULL", c_unit, 164);
    const std::string strThreadName = threadName != nullptr ? threadName : "";
    Contract::require(!strThreadName.empty(), "!strThreadName.empty()", c_unit, 166);
    m_mutex.acquire();
    m_threadPatterns.add(strThreadName);
    m_mutex.release();
}

void Tracer::TraceTheCall(const char* className)
{
    Contract::require(className != nullptr, "className != NULL", c_unit, 174);
    const std::string strClassName = className != nullptr ? className : "";
    Contract::require(!strClassName.empty(), "!strClassName.empty()", c_unit, 176);
    m_mutex.acquire();
    if (strClassName.front() == '-')
        m_forbiddenPatterns.add(strClassName.substr(1));
    else
        m_callPatterns.add(strClassName);
    m_mutex.release();
}

void Tracer::PrintStacks()
{
    m_mutex.acquire();
    for (const auto& [threadId, threadTracer] : m_threadTracers)
        threadTracer->PrintStack();
    m_mutex.release();
}

void Tracer::PrintAllObjectsCount()
{
    m_mutex.acquire();
    if (currentThreadTracer() != nullptr) {
        PrintString("\n-------------- OBJECT(S) COUNT --------------\n");
        for (const auto& [className, count] : m_objectCounts)
            PrintString(
                MessageFormatter::text("Class = %-30s, count = %.6d\n", className.c_str(), count));
        PrintString("---------------------------------------------\n");
    }
    m_mutex.release();
}

bool Tracer::isActive()
{
    m_mutex.acquire();
    const bool active = m_active;
    m_mutex.release();
    return active;
}

void Tracer::setActive(bool active)
{
    m_mutex.acquire();
    m_active = active;
    if (m_Instance == this)
        CallMarker::s_tracing = active;
    m_mutex.release();
}

ThreadTracer* Tracer::currentThreadTracer() const
{
    const auto found = m_threadTracers.find(gettid());
    return found == m_threadTracers.end() ? nullptr : found->second.get();
}

void Tracer::enableCurrentThread(bool enabled)
{
    m_mutex.acquire();
    ThreadTracer* const threadTracer = currentThreadTracer();
    if (threadTracer != nullptr)
        threadTracer->setEnabled(enabled);
    m_mutex.release();
}
