#include "BlockedViolations.h"
#include "ChildProcess.h"
#include "CrashReport.h"
#include "LineOutputFixture.h"
#include "Logger.h"
#include "Tracer.h"

#include <cstdio>
#include <functional>
#include <string>

#include <gtest/gtest.h>

// Where the signal of violations is blocked, a check that does not hold returns.
namespace {

const std::string inTracer = " - In File : Infrastructure/ProgrammingServices/Tracer/src/Tracer";
const std::string inLogger = " - In File : Infrastructure/ProgrammingServices/Tracer/src/Logger";
const std::string inOutput =
    " - In File : Infrastructure/ProgrammingServices/Tracer/src/LineOutput";
const std::string atLine = " - At Line : <line>";

/// Violates, and tells when something is thrown or has changed. The report follows at the end.
void violate(const std::function<void()>& violation, const std::function<bool()>& isAsBefore)
{
    const BlockedViolations blocked;
    const bool withoutHarm = succeeds([&] {
        violation();
        return isAsBefore();
    });
    if (!withoutHarm)
        std::fputs("there is harm\n", stderr);
}

class ViolationWayOut : public testing::Test {
protected:
    Tracer m_tracer;
    Logger m_logger;
};

} // namespace

TEST_F(ViolationWayOut, RegistersNoThreadWithoutAName)
{
    m_tracer.TraceTheThread("*");
    m_tracer.SetFileName("/nowhere/trace");

    EXPECT_CRASH_REPORT(
        violate(
            [this] { m_tracer.BeginningOfThread(nullptr); },
            [this] {
                m_tracer.PrintAllObjectsCount(); // prints on a registered thread
                return m_tracer.areAllMsgFlushed();
            }),
        "REQUIRE VIOLATION : threadName != NULL" + inTracer + atLine);
}

TEST_F(ViolationWayOut, AddsNoPatternOfThreadsForNull)
{
    EXPECT_CRASH_REPORT(
        violate(
            [this] { m_tracer.TraceTheThread(nullptr); },
            [this] { return !m_tracer.isThreadPermittedToPrint(""); }),
        "REQUIRE VIOLATION : threadName != NULL" + inTracer + atLine);
}

TEST_F(ViolationWayOut, AddsNoEmptyPatternOfThreads)
{
    EXPECT_CRASH_REPORT(
        violate(
            [this] { m_tracer.TraceTheThread(""); },
            [this] { return !m_tracer.isThreadPermittedToPrint(""); }),
        "REQUIRE VIOLATION : !strThreadName.empty()" + inTracer + atLine);
}

TEST_F(ViolationWayOut, AddsNoPatternOfCallsForNull)
{
    EXPECT_CRASH_REPORT(
        violate(
            [this] { m_tracer.TraceTheCall(nullptr); },
            [this] { return !m_tracer.isCallPermittedToPrint(""); }),
        "REQUIRE VIOLATION : className != NULL" + inTracer + atLine);
}

TEST_F(ViolationWayOut, AddsNoEmptyPatternOfCalls)
{
    EXPECT_CRASH_REPORT(
        violate(
            [this] { m_tracer.TraceTheCall(""); },
            [this] { return !m_tracer.isCallPermittedToPrint(""); }),
        "REQUIRE VIOLATION : !strClassName.empty()" + inTracer + atLine);
}

TEST_F(ViolationWayOut, ReadsNoTracerConfigurationForNull)
{
    EXPECT_CRASH_REPORT(
        violate(
            [this] { m_tracer.ReadConfigFile(nullptr); },
            [this] { return m_tracer.getCurrentFileName().empty(); }),
        "REQUIRE VIOLATION : fileName != NULL" + inTracer + atLine);
}

TEST_F(ViolationWayOut, ReadsNoLogConfigurationForNull)
{
    EXPECT_CRASH_REPORT(
        violate(
            [this] { m_logger.ReadConfigFile(nullptr); },
            [this] { return m_logger.getCurrentFileName().empty(); }),
        "REQUIRE VIOLATION : fileName != NULL" + inLogger + atLine);
}

TEST_F(ViolationWayOut, QueuesNoEmptyLine)
{
    TestOutput output;
    output.SetFileName("/nowhere/ring");

    EXPECT_CRASH_REPORT(
        violate(
            [&output] { output.PrintString(""); }, [&output] { return output.areAllMsgFlushed(); }),
        "REQUIRE VIOLATION : !(msg.empty())" + inOutput + atLine);
}
