#include "CallMarker.h"
#include "ContendedMutex.h"
#include "PublishedTracer.h"

#include <cstdio>
#include <functional>
#include <optional>
#include <ostream>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

namespace {

struct Operation {
    std::string name;
    std::function<void(Tracer&)> action;

    friend void PrintTo(const Operation& row, std::ostream* out) { *out << row.name; }
};

class TracerMutex : public testing::Test {
protected:
    /// Whether the action waits for the mutex while another thread has it, and leaves it free.
    bool waitsForTheMutex(
        const std::function<void()>& action, const std::function<void()>& preparation = [] {})
    {
        KFMutex& mutex = m_tracer.mutex();
        const bool waits = waitsFor(mutex, action, preparation);
        const bool isFree = mutex.tryacquire();
        if (isFree)
            mutex.release();
        return waits && isFree;
    }

    PublishedTracer m_tracer;
};

class TracerMutexOf : public TracerMutex, public testing::WithParamInterface<Operation> {};

bool wasTracingWhileWriting = false;

} // namespace

extern "C" {
// NOLINTBEGIN(bugprone-reserved-identifier): the names that the linker's --wrap gives
int __real_fputs(const char* text, std::FILE* stream);

int __wrap_fputs(const char* text, std::FILE* stream)
{
    wasTracingWhileWriting = CallMarker::isTracing();
    return __real_fputs(text, stream);
}
// NOLINTEND(bugprone-reserved-identifier)
}

TEST_P(TracerMutexOf, IsWaitedForAndReleased)
{
    EXPECT_TRUE(waitsForTheMutex([] { GetParam().action(*Tracer::GetInstance()); }));
}

INSTANTIATE_TEST_SUITE_P(
    Operations, TracerMutexOf,
    testing::Values(
        Operation{"Enable", [](Tracer& tracer) { tracer.Enable(); }},
        Operation{"Disable", [](Tracer& tracer) { tracer.Disable(); }},
        Operation{"EndOfThread", [](Tracer& tracer) { tracer.EndOfThread(); }},
        Operation{
            "isThreadPermittedToPrint",
            [](Tracer& tracer) { tracer.isThreadPermittedToPrint("Main"); }},
        Operation{
            "isCallPermittedToPrint", [](Tracer& tracer) { tracer.isCallPermittedToPrint("f"); }},
        Operation{
            "isCallForbiddenToPrint", [](Tracer& tracer) { tracer.isCallForbiddenToPrint("f"); }},
        Operation{"TraceTheThread", [](Tracer& tracer) { tracer.TraceTheThread("Main"); }},
        Operation{"TraceTheCall", [](Tracer& tracer) { tracer.TraceTheCall("f"); }},
        Operation{"PrintStacks", [](Tracer& tracer) { tracer.PrintStacks(); }},
        Operation{"PrintAllObjectsCount", [](Tracer& tracer) { tracer.PrintAllObjectsCount(); }},
        Operation{"giveUpWhenHeld", [](Tracer& tracer) { tracer.giveUpWhenHeld(); }},
        Operation{"isActive", [](Tracer& tracer) { tracer.isActive(); }},
        Operation{"setActive", [](Tracer& tracer) { tracer.setActive(true); }}),
    [](const testing::TestParamInfo<Operation>& operation) { return operation.param.name; });

TEST_F(TracerMutex, IsWaitedForByACallThatBegins)
{
    std::optional<CallMarker> marker;

    // Nothing else of the call of a disabled thread needs the mutex.
    EXPECT_TRUE(waitsForTheMutex(
        [&] { m_tracer->BeginningOfCall(*marker); },
        [&] {
            m_tracer->BeginningOfThread("other");
            m_tracer->Disable();
            marker.emplace("f");
        }));
}

TEST_F(TracerMutex, IsWaitedForByACallThatEnds)
{
    std::optional<CallMarker> marker;

    EXPECT_TRUE(waitsForTheMutex([&] { marker.reset(); }, [&] { marker.emplace("f"); }));
}

TEST_F(TracerMutex, IsWaitedForByACount)
{
    m_tracer->Disable();
    const CallMarker marker("A", "A::constructor", true, this);

    EXPECT_TRUE(waitsForTheMutex([&] { m_tracer->UpdateObjectCount(marker); }));
}

TEST_F(TracerMutex, IsNotReleasedBeforeAThreadIsRegistered)
{
    m_tracer->EndOfThread();
    MutexWatch watch(m_tracer.mutex());
    watch.onEachRelease([this] { m_tracer->PrintAllObjectsCount(); });

    m_tracer->BeginningOfThread("test");

    EXPECT_EQ(
        m_tracer.lines(), "\n-------------- OBJECT(S) COUNT --------------\n"
                          "---------------------------------------------\n")
        << "which only a registered thread writes";
}

TEST_F(TracerMutex, IsNotReleasedBetweenSwitchingOffAndTheEndOfWriting)
{
    using State = std::pair<bool, bool>; // active, all written
    m_tracer->setSynchronous(false);
    m_tracer->PrintString("pending\n");
    std::vector<State> states;
    MutexWatch watch(m_tracer.mutex());
    watch.onEachRelease(
        [&] { states.emplace_back(m_tracer->isActive(), m_tracer->areAllMsgFlushed()); });

    m_tracer->FinishTracing();

    EXPECT_THAT(states, testing::ElementsAre(State(false, true)));
}

TEST_F(TracerMutex, ThatCannotBeHadEndsTracingForGood)
{
    EXPECT_EXIT(
        {
            m_tracer.mutex().acquire();
            std::thread([this] { m_tracer->giveUpWhenHeld(); }).join();
            m_tracer.mutex().release();
            m_tracer->setActive(true);
            _exit(CallMarker::isTracing() ? 1 : 7);
        },
        testing::ExitedWithCode(7), "");
}

TEST_F(TracerMutex, FinishSwitchesOffBeforeItWritesWhatIsPending)
{
    m_tracer->setSynchronous(false);
    m_tracer->PrintString("pending\n");
    wasTracingWhileWriting = true;

    m_tracer->FinishTracing();

    EXPECT_FALSE(wasTracingWhileWriting);
}
