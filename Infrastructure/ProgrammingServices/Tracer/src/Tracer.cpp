#include "Tracer.h"

#include "CallMarker.h"
#include "Contract.h"
#include "Diagnostics.h"
#include "MessageFormatter.h"
#include "ThreadTracer.h"
#include "TracerConfigFileParser.h"
#include "TracerFlushThread.h"
#include "UnlessMemoryRunsOut.h"

#include <string_view>
#include <utility>

#include <unistd.h>

namespace {

constexpr const char* UNIT = "Infrastructure/ProgrammingServices/Tracer/src/Tracer";

} // namespace

std::atomic<Tracer*> Tracer::m_Instance = nullptr;

Tracer::Tracer() : LineOutput("Tracer") {}

Tracer::~Tracer()
{
    Tracer* published = this;
    m_Instance.compare_exchange_strong(published, nullptr);
    updateTracing();
    endBackgroundWriting();
}

Tracer* Tracer::GetInstance()
{
    return m_Instance;
}

// Kept: the post-condition is checked on the null branch alone.
void Tracer::SetInstance(Tracer* pTheTracer)
{
    if (!Contract::require(pTheTracer != nullptr, "pTheTracer != NULL", UNIT)) {
        Contract::ensure(m_Instance != nullptr, "m_Instance != NULL", UNIT);
        return;
    }
    m_Instance = pTheTracer;
    updateTracing();
}

void Tracer::ReadConfigFile(const char* fileName)
{
    if (Contract::require(fileName != nullptr, "fileName != NULL", UNIT))
        readConfigFile<TracerConfigFileParser>(fileName);
}

void Tracer::giveUpWhenHeld()
{
    if (!inBoundedTime([] {}))
        CallMarker::giveUpTracing();
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
    if (!Contract::require(threadName != nullptr, "threadName != NULL", UNIT))
        return;
    const KFMutexGuard guard(m_mutex);
    if (!isThreadPermittedToPrint(threadName))
        return;
    unlessMemoryRunsOut([this, threadName] {
        m_threadTracers.try_emplace(gettid(), std::make_unique<ThreadTracer>(*this, threadName));
    });
}

void Tracer::EndOfThread()
{
    const KFMutexGuard guard(m_mutex);
    m_threadTracers.erase(gettid());
}

void Tracer::BeginningOfCall(CallMarker& marker)
{
    const KFMutexGuard guard(m_mutex);
    ThreadTracer* threadTracer = currentThreadTracer();
    if (threadTracer == nullptr) {
        BeginningOfThread(MessageFormatter::text("th_%-d", gettid()).c_str());
        threadTracer = currentThreadTracer();
    }
    if (threadTracer != nullptr)
        threadTracer->BeginningOfCall(marker);
}

void Tracer::EndOfCall(const CallMarker& marker) noexcept
{
    const KFMutexGuard guard(m_mutex);
    marker.getThreadTracer()->EndOfCall(marker);
}

int Tracer::UpdateObjectCount(const CallMarker& marker)
{
    if (!marker.isCounted())
        return 0;
    const KFMutexGuard guard(m_mutex);
    return m_objectCounts[marker.getClassName()] += marker.isConstructor() ? 1 : -1;
}

bool Tracer::isThreadPermittedToPrint(const char* threadName)
{
    const KFMutexGuard guard(m_mutex);
    // NOLINTNEXTLINE(clang-analyzer-core.NonNullParamChecker): its caller has checked the name
    return m_threadPatterns.match(threadName);
}

bool Tracer::isCallPermittedToPrint(const char* methodName)
{
    const KFMutexGuard guard(m_mutex);
    return m_callPatterns.match(methodName);
}

bool Tracer::isCallForbiddenToPrint(const char* methodName)
{
    const KFMutexGuard guard(m_mutex);
    return m_forbiddenPatterns.match(methodName);
}

void Tracer::TraceTheThread(const char* threadName)
{
    if (!Contract::require(threadName != nullptr, "threadName != NULL", UNIT))
        return;
    // NOLINTNEXTLINE(clang-analyzer-core.NonNullParamChecker): the check tells whether it is null
    const std::string_view strThreadName = threadName;
    if (!Contract::require(!strThreadName.empty(), "!strThreadName.empty()", UNIT))
        return;
    const KFMutexGuard guard(m_mutex);
    m_threadPatterns.add(strThreadName);
}

void Tracer::TraceTheCall(const char* className)
{
    if (!Contract::require(className != nullptr, "className != NULL", UNIT))
        return;
    // NOLINTNEXTLINE(clang-analyzer-core.NonNullParamChecker): the check tells whether it is null
    const std::string_view strClassName = className;
    if (!Contract::require(!strClassName.empty(), "!strClassName.empty()", UNIT))
        return;
    const KFMutexGuard guard(m_mutex);
    if (strClassName.front() == '-')
        m_forbiddenPatterns.add(strClassName.substr(1));
    else
        m_callPatterns.add(strClassName);
}

void Tracer::PrintStacks()
{
    const KFMutexGuard guard(m_mutex);
    for (const auto& [threadId, threadTracer] : m_threadTracers)
        threadTracer->PrintStack();
}

void Tracer::PrintAllObjectsCount()
{
    const KFMutexGuard guard(m_mutex);
    if (currentThreadTracer() == nullptr)
        return;
    PrintString("\n-------------- OBJECT(S) COUNT --------------\n");
    for (const auto& [className, count] : m_objectCounts)
        PrintString(
            MessageFormatter::text("Class = %-30s, count = %.6d\n", className.c_str(), count));
    PrintString("---------------------------------------------\n");
}

bool Tracer::isActive() const
{
    const KFMutexGuard guard(m_mutex);
    return m_active;
}

void Tracer::setActive(bool active)
{
    const KFMutexGuard guard(m_mutex);
    m_active = active;
    updateTracing();
}

std::shared_ptr<FlushThread> Tracer::makeFlushThread()
{
    return std::make_shared<TracerFlushThread>();
}

void Tracer::endWithoutFileName()
{
    Diagnostics::endProcess("please call TRACE_SET_FILE_NAME(\"baseFileName\")");
}

// Follows each change of which tracer is published and of whether it is active.
void Tracer::updateTracing()
{
    CallMarker::updateTracing([] {
        const Tracer* const published = m_Instance;
        return published != nullptr && published->m_active.load();
    });
}

ThreadTracer* Tracer::currentThreadTracer() const
{
    const auto found = m_threadTracers.find(gettid());
    return found == m_threadTracers.end() ? nullptr : found->second.get();
}

void Tracer::enableCurrentThread(bool enabled)
{
    const KFMutexGuard guard(m_mutex);
    ThreadTracer* const threadTracer = currentThreadTracer();
    if (threadTracer != nullptr)
        threadTracer->setEnabled(enabled);
}
