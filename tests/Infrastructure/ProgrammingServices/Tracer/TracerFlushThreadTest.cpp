#include "TracerFlushThread.h"

#include "AskedSleep.h"
#include "CallMarker.h"
#include "ContendedMutex.h"
#include "ProcessThreads.h"
#include "PublishedTracer.h"
#include "Waiting.h"

#include <chrono>
#include <memory>
#include <optional>

#include <gtest/gtest.h>

namespace {

class TracerFlushThreadTest : public testing::Test {
protected:
    TracerFlushThreadTest() { m_tracer->setSynchronous(false); }

    PublishedTracer m_tracer;
};

class TracedFlushThread : public TracerFlushThread {
public:
    void run() override { const CallMarker marker("run"); }
};

} // namespace

TEST_F(TracerFlushThreadTest, WritesPendingLinesNoEarlierThanAfterASecondAndAgain)
{
    const auto before = std::chrono::steady_clock::now();

    m_tracer->PrintString("first\n");
    m_tracer->Initialize();
    waitUntilWritten(*Tracer::GetInstance());
    EXPECT_GE(std::chrono::steady_clock::now() - before, std::chrono::seconds(1));
    EXPECT_EQ(m_tracer.lines(), "first\n");

    m_tracer->PrintString("second\n");
    waitUntilWritten(*Tracer::GetInstance());
    EXPECT_EQ(m_tracer.lines(), "first\nsecond\n");
}

TEST_F(TracerFlushThreadTest, SleepsASecond)
{
    m_tracer->Initialize();

    EXPECT_EQ(nextAskedSleep(), std::chrono::seconds(1));
}

TEST_F(TracerFlushThreadTest, IsOneThreadForATracer)
{
    m_tracer->Initialize();
    const std::ptrdiff_t before = threadsOfTheProcess();

    m_tracer->Initialize();

    EXPECT_EQ(threadsOfTheProcess(), before);
}

TEST_F(TracerFlushThreadTest, IsNotStartedWhenSynchronous)
{
    m_tracer->setSynchronous(true);
    const std::ptrdiff_t before = threadsOfTheProcess();

    m_tracer->Initialize();

    EXPECT_EQ(threadsOfTheProcess(), before);
}

TEST_F(TracerFlushThreadTest, HasNoNameInTraces)
{
    m_tracer->setSynchronous(true);
    TracedFlushThread thread;

    thread.start();
    thread.stop();

    EXPECT_EQ(m_tracer.linesOfAllThreads(), "[<id>][<id>]run\n") << "named by its number";
}

TEST_F(TracerFlushThreadTest, ComesBackWhileAnotherThreadKeepsTheMutexOfTheTracer)
{
    m_tracer.mutex().acquire();
    m_tracer->Initialize();
    waitUntilWaitedFor(m_tracer.mutex());

    EXPECT_EQ(nextAskedSleep(), std::chrono::seconds(1));
    m_tracer.mutex().release();
}

TEST(TracerFlushThread, KeepsItsObjectUntilItHasEnded)
{
    std::optional<PublishedTracer> tracer(std::in_place);
    auto thread = std::make_shared<TracerFlushThread>();
    const std::weak_ptr<TracerFlushThread> object = thread;
    thread->start();

    thread->letGo();
    thread.reset();
    EXPECT_FALSE(object.expired()) << "it goes on for the published tracer";
    tracer.reset();

    EXPECT_TRUE(holdsInTime([&object] { return object.expired(); }));
}

TEST(TracerFlushThread, EndsWhenThereIsNoTracer)
{
    ASSERT_EQ(Tracer::GetInstance(), nullptr);
    TracerFlushThread thread;

    thread.start();
    KFThread::waitForThreadTermination(&thread);

    EXPECT_FALSE(thread.isRunning());
}
