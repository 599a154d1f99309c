#include "ThreadTracer.h"

#include "CallMarker.h"
#include "MessageFormatter.h"
#include "TimeStamp.h"
#include "TracedAddress.h"
#include "Tracer.h"
#include "UnlessMemoryRunsOut.h"

#include <cstdarg>
#include <cstdint>
#include <utility>

#include <unistd.h>

namespace {

constexpr const char* NO_OBJECT = "[     ][          ]";

const char* tag(TraceMsgType type)
{
    switch (type) {
    case TraceMsgType::D:
        return ">> [D] ";
    case TraceMsgType::E:
        return ">> [E] ";
    case TraceMsgType::W:
        return ">> [W] ";
    case TraceMsgType::L0:
        return ">> [0] ";
    case TraceMsgType::L1:
        return ">> [1] ";
    case TraceMsgType::L2:
        return ">> [2] ";
    case TraceMsgType::L3:
        return ">> [3] ";
    case TraceMsgType::L4:
        return ">> [4] ";
    case TraceMsgType::L5:
        return ">> [5] ";
    }
    return ""; // a combination of types has no tag
}

std::string addressColumn(const CallMarker& marker)
{
    if (marker.getObject() == nullptr)
        return NO_OBJECT;
    return MessageFormatter::text("[     ][0x%-8x]", tracedAddress(marker.getObject()));
}

std::string countColumn(const CallMarker& marker, int count)
{
    if (!marker.isCounted())
        return addressColumn(marker);
    return MessageFormatter::text("[%-5d][0x%-8x]", count, tracedAddress(marker.getObject()));
}

} // namespace

ThreadTracer::ThreadTracer(Tracer& tracer, std::string threadName)
    : m_tracer(tracer), m_threadName(std::move(threadName))
{
}

ThreadTracer::~ThreadTracer()
{
    for (CallMarker* const marker : m_callStack) {
        marker->m_threadTracer = nullptr;
        marker->m_printed = false;
    }
}

void ThreadTracer::BeginningOfCall(CallMarker& marker)
{
    if (!m_enabled)
        return;
    const int count = m_tracer.UpdateObjectCount(marker);
    const char* const methodName = marker.getMethodName();
    const bool printed =
        !m_tracer.isCallForbiddenToPrint(methodName) && m_tracer.isCallPermittedToPrint(methodName);
    if (printed)
        printEntry(marker, count);
    m_callStack.push_back(&marker);
    // Last, so that a marker that memory did not suffice for has no thread to leave.
    marker.m_threadTracer = this;
    marker.m_printed = printed;
}

// Also with tracing switched off meanwhile: the marker is about to go, so it must leave the stack.
void ThreadTracer::EndOfCall(const CallMarker& marker) noexcept
{
    if (CallMarker::isTracing() && m_enabled && m_tracer.getPrintExit() && marker.isPrinted())
        unlessMemoryRunsOut([this, &marker] { printExit(marker); });
    m_callStack.pop_back();
}

bool ThreadTracer::writes(TraceMsgType type) const
{
    return (m_tracer.getMsgTypeMask() & static_cast<std::uint32_t>(type)) != 0;
}

void ThreadTracer::PrintMsg(TraceMsgType type, const char* format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    unlessMemoryRunsOut([&] {
        const std::string message = MessageFormatter::format(format, arguments);
        std::string line = lineStart();
        if (m_tracer.getPrintObjects())
            line += NO_OBJECT;
        m_tracer.PrintString(line + indentation() + tag(type) + message + "\n");
    });
    va_end(arguments);
}

void ThreadTracer::PrintStack() const
{
    if (m_callStack.empty())
        return;
    m_tracer.PrintString("\n-------------- CALLSTACK --------------\n");
    std::size_t depth = m_callStack.size();
    for (; depth > 0; --depth)
        m_tracer.PrintString(
            threadColumns() + "    [" + std::to_string(depth) + "] " +
            m_callStack[depth - 1]->getMethodName() + "\n");
    m_tracer.PrintString("---------------------------------------\n");
}

std::string ThreadTracer::lineStart() const
{
    return (m_tracer.getPrintTime() ? TimeStamp::now() : std::string()) + threadColumns();
}

std::string ThreadTracer::threadColumns() const
{
    return MessageFormatter::text("[th_%-5d][%-15s]", gettid(), m_threadName.c_str());
}

std::string ThreadTracer::indentation() const
{
    std::string text;
    for (const CallMarker* const marker : m_callStack) {
        if (marker->isPrinted() || m_tracer.getIndentHidden())
            text += m_tracer.getTreeIndent() ? "| " : "  ";
    }
    return text;
}

void ThreadTracer::printEntry(const CallMarker& marker, int count) const
{
    std::string line = lineStart();
    if (m_tracer.getPrintObjects())
        line += countColumn(marker, count);
    m_tracer.PrintString(line + indentation() + marker.getMethodName() + "\n");
}

void ThreadTracer::printExit(const CallMarker& marker) const
{
    std::string line = lineStart();
    if (m_tracer.getPrintObjects())
        line += addressColumn(marker);
    m_tracer.PrintString(line + indentation() + "<- " + marker.getMethodName() + "\n");
}
