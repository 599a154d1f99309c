#include "KFThread.h"

#include "BlockedViolations.h"
#include "CallMarker.h"
#include "ContendedMutex.h"
#include "CrashReport.h"
#include "PublishedTracer.h"
#include "VirtualSlot.h"

#include <atomic>
#include <functional>
#include <future>
#include <string>
#include <thread>
#include <type_traits>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

namespace {

/// A thread whose body is a function of the test, and which counts the requests to finish.
class FunctionThread : public KFThread {
public:
    FunctionThread(const char* name, std::function<void()> body)
        : KFThread(name), m_body(std::move(body))
    {
    }

    void run() override { m_body(); }
    void onTerminate() override
    {
        ++m_requests;
        if (m_onRequest)
            m_onRequest();
    }

    int requests() const { return m_requests; }
    void onRequest(std::function<void()> action) { m_onRequest = std::move(action); }

private:
    std::function<void()> m_body;
    std::function<void()> m_onRequest;
    int m_requests = 0;
};

struct BodyState {
    std::promise<void> started;
    std::promise<void> waited;
    std::promise<void> finish;
    bool finished = false;
    int requests = 0;
};

/// A thread whose body is told to finish by its own destructor, and so outlives the subclass.
class OutlivingThread : public KFThread {
public:
    explicit OutlivingThread(BodyState& state) : KFThread("worker"), m_state(state) {}
    ~OutlivingThread() override { m_state.finish.set_value(); }

    void run() override
    {
        BodyState& state = m_state;
        state.started.set_value();
        state.finish.get_future().wait();
        msleep(100); // gives a destructor that does not wait the time to be noticed
        state.finished = true;
    }
    void onTerminate() override { ++m_state.requests; }

private:
    BodyState& m_state;
};

/// Does something when its thread ends, after the thread's entry has returned.
struct AtThreadEnd {
    ~AtThreadEnd()
    {
        if (action)
            action();
    }
    std::function<void()> action;
};

thread_local AtThreadEnd atThreadEnd;

using Wait = void (*)(KFThread&);

/// A thread whose body waits for its own end, and then outlives the subclass.
class SelfWaitingThread : public KFThread {
public:
    SelfWaitingThread(BodyState& state, Wait wait)
        : KFThread("worker"), m_state(state), m_wait(wait)
    {
    }
    ~SelfWaitingThread() override { m_state.finish.set_value(); }

    void run() override
    {
        BodyState& state = m_state;
        state.started.get_future().wait();
        m_wait(*this);
        state.waited.set_value();
        state.finish.get_future().wait();
        msleep(100); // gives a destructor that does not wait the time to be noticed
        state.finished = true;
    }

private:
    BodyState& m_state;
    Wait m_wait;
};

class KFThreadOwnEnd : public testing::TestWithParam<Wait> {};

void openMarkerAfterwards()
{
    const CallMarker marker("afterwards");
}

std::string defaultName()
{
    return "th_" + std::to_string(gettid());
}

/// The thread name in the line of a call, which is the last thing in its line.
std::string nameOf(const std::string& call, const std::string& lines)
{
    const std::size_t end = lines.find(']' + call + '\n');
    if (end == std::string::npos)
        return "no line of " + call;
    const std::size_t begin = lines.rfind('[', end) + 1;
    const std::string padded = lines.substr(begin, end - begin);
    return padded.substr(0, padded.find_last_not_of(' ') + 1);
}

} // namespace

TEST(KFThread, RunsItsBodyOnAThreadOfItsOwn)
{
    pthread_t inside{};
    FunctionThread thread("worker", [&inside] { inside = KFThread::getCurrentThreadId(); });

    EXPECT_TRUE(thread.start());
    thread.stop();

    EXPECT_TRUE(pthread_equal(inside, thread.getHandle()));
    EXPECT_FALSE(pthread_equal(inside, pthread_self()));
}

TEST(KFThread, IsCreatedStopped)
{
    const FunctionThread thread("worker", [] {});

    EXPECT_FALSE(thread.isRunning());
}

TEST(KFThread, RunsFromStartUntilTheBodyHasReturned)
{
    std::promise<void> finish;
    FunctionThread thread("worker", [&finish] { finish.get_future().wait(); });

    thread.start();
    EXPECT_TRUE(thread.isRunning());
    finish.set_value();
    KFThread::waitForThreadTermination(&thread);

    EXPECT_FALSE(thread.isRunning());
}

TEST(KFThread, RunningIsStillSetInsideTheBody)
{
    bool running = false;
    FunctionThread thread("worker", [&running, &thread] { running = thread.isRunning(); });

    thread.start();
    thread.stop();

    EXPECT_TRUE(running);
}

TEST(KFThread, DoesNotStartASecondBodyWhileTheFirstRuns)
{
    std::promise<void> finish;
    std::atomic<int> bodies = 0;
    FunctionThread thread("worker", [&finish, &bodies] {
        if (++bodies == 1)
            finish.get_future().wait();
    });

    EXPECT_TRUE(thread.start());
    EXPECT_FALSE(thread.start());
    finish.set_value();
    thread.stop();

    EXPECT_EQ(bodies, 1);
}

TEST(KFThread, StartsAgainWhenItsBodyHasReturned)
{
    std::atomic<int> bodies = 0;
    FunctionThread thread("worker", [&bodies] { ++bodies; });

    thread.start();
    while (thread.isRunning())
        std::this_thread::yield();
    EXPECT_TRUE(thread.start());
    thread.stop();

    EXPECT_EQ(bodies, 2);
}

TEST(KFThread, StopAsksTheBodyToFinishAndWaitsForIt)
{
    std::promise<void> finish;
    bool finished = false;
    FunctionThread thread("worker", [&finish, &finished] {
        finish.get_future().wait();
        finished = true;
    });
    thread.onRequest([&finish] { finish.set_value(); });

    thread.start();
    thread.stop();

    EXPECT_EQ(thread.requests(), 1);
    EXPECT_TRUE(finished);
    EXPECT_FALSE(thread.isRunning());
}

TEST(KFThread, WaitingForTerminationAsksForNothing)
{
    bool finished = false;
    FunctionThread thread("worker", [&finished] { finished = true; });

    thread.start();
    KFThread::waitForThreadTermination(&thread);

    EXPECT_TRUE(finished);
    EXPECT_EQ(thread.requests(), 0);
}

TEST(KFThread, DestructorWaitsForARunningBodyAndAsksOnlyTheBase)
{
    BodyState state;

    {
        OutlivingThread thread(state);
        thread.start();
        state.started.get_future().wait();
    }

    EXPECT_TRUE(state.finished);
    EXPECT_EQ(state.requests, 0);
}

TEST(KFThread, StopsWithoutHavingStarted)
{
    FunctionThread thread("worker", [] {});

    thread.stop();

    EXPECT_EQ(thread.requests(), 1);
}

TEST(KFThread, IsTracedUnderItsName)
{
    PublishedTracer tracer;
    const std::string name = "flusher";
    std::string copied = name;
    FunctionThread thread(copied.c_str(), [] { const CallMarker marker("body"); });
    copied = "changed";

    thread.start();
    thread.stop();

    EXPECT_EQ(nameOf("body", tracer.lines()), name);
}

TEST(KFThread, IsForgottenByTheTracerAtTheEnd)
{
    PublishedTracer tracer;
    std::string idName;
    FunctionThread thread("flusher", [&idName] {
        idName = defaultName();
        atThreadEnd.action = openMarkerAfterwards;
    });

    thread.start();
    thread.stop();

    EXPECT_EQ(nameOf("afterwards", tracer.lines()), idName);
}

TEST(KFThread, RunsUntilTheTracerHasForgottenIt)
{
    PublishedTracer tracer;
    FunctionThread thread("flusher", [] {});
    std::vector<bool> running;
    MutexWatch watch(tracer.mutex());
    watch.onEachRelease([&] { running.push_back(thread.isRunning()); });

    thread.start();
    thread.stop();

    EXPECT_THAT(running, testing::AllOf(testing::Not(testing::IsEmpty()), testing::Each(true)));
    EXPECT_FALSE(thread.isRunning());
}

TEST(KFThread, WithoutNameIsNotRegistered)
{
    PublishedTracer tracer;
    std::string idName;
    FunctionThread thread(nullptr, [&idName] {
        idName = defaultName();
        const CallMarker marker("body");
    });

    thread.start();
    thread.stop();

    EXPECT_EQ(nameOf("body", tracer.lines()), idName);
}

TEST(KFThread, WithoutNameIsNotForgottenAtTheEnd)
{
    PublishedTracer tracer;
    FunctionThread thread(nullptr, [] {
        Tracer::GetInstance()->BeginningOfThread("own");
        atThreadEnd.action = openMarkerAfterwards;
    });

    thread.start();
    thread.stop();

    EXPECT_EQ(nameOf("afterwards", tracer.lines()), "own");
}

TEST(KFThread, IsNotRegisteredWhenItStartsBeforeTracingIsActive)
{
    PublishedTracer tracer;
    tracer->setActive(false);
    std::string idName;
    FunctionThread thread("flusher", [&tracer, &idName] {
        tracer->setActive(true);
        idName = defaultName();
        const CallMarker marker("body");
    });

    thread.start();
    thread.stop();

    EXPECT_EQ(nameOf("body", tracer.lines()), idName);
}

TEST(KFThread, IsForgottenWhenTracingBecameActiveInItsBody)
{
    PublishedTracer tracer;
    tracer->setActive(false);
    std::string idName;
    FunctionThread thread("flusher", [&tracer, &idName] {
        tracer->setActive(true);
        tracer->BeginningOfThread("own");
        idName = defaultName();
        atThreadEnd.action = openMarkerAfterwards;
    });

    thread.start();
    thread.stop();

    EXPECT_EQ(nameOf("afterwards", tracer.lines()), idName);
}

TEST(KFThread, IsNotForgottenWhenTracingEndedInItsBody)
{
    PublishedTracer tracer;
    FunctionThread thread("flusher", [&tracer] {
        tracer->setActive(false);
        atThreadEnd.action = [&tracer] {
            tracer->setActive(true);
            openMarkerAfterwards();
        };
    });

    thread.start();
    thread.stop();

    EXPECT_EQ(nameOf("afterwards", tracer.lines()), "flusher");
}

TEST(KFThread, RunsWithoutATracer)
{
    ASSERT_EQ(Tracer::GetInstance(), nullptr);
    bool ran = false;
    FunctionThread thread("worker", [&ran] { ran = true; });

    thread.start();
    thread.stop();

    EXPECT_TRUE(ran);
}

TEST(KFThread, EntryWithoutThreadIsAViolation)
{
    EXPECT_CRASH_REPORT(
        KFThread::threadStart(nullptr),
        "REQUIRE VIOLATION : arg != NULL - In File : "
        "Infrastructure/ProgrammingServices/OS/src/KFThread - At Line : 156");
}

TEST(KFThread, EntryWithoutThreadReturnsWhereViolationsAreBlocked)
{
    EXPECT_CRASH_REPORT(
        {
            const BlockedViolations blocked;
            KFThread::threadStart(nullptr);
        },
        "REQUIRE VIOLATION : arg != NULL - In File : "
        "Infrastructure/ProgrammingServices/OS/src/KFThread - At Line : 156");
}

TEST(KFThread, CurrentIdIsThatOfTheCaller)
{
    EXPECT_TRUE(pthread_equal(KFThread::getCurrentThreadId(), pthread_self()));
}

TEST(KFThread, HasItsVirtualOperationsInTheFixedOrder)
{
    static_assert(std::has_virtual_destructor_v<KFThread>); // it has the slots 0 and 1

    EXPECT_EQ(virtualSlot(&KFThread::run), 2);
    EXPECT_EQ(virtualSlot(&KFThread::onTerminate), 3);
    EXPECT_FALSE(isVirtualOperation(&KFThread::start));
    EXPECT_FALSE(isVirtualOperation(&KFThread::stop));
    EXPECT_FALSE(isVirtualOperation(&KFThread::isRunning));
    EXPECT_FALSE(isVirtualOperation(&KFThread::getHandle));
}

TEST_P(KFThreadOwnEnd, IsNotWaitedForByTheBodyButStillByTheDestructor)
{
    BodyState state;

    {
        SelfWaitingThread thread(state, GetParam());
        thread.start();
        state.started.set_value();
        state.waited.get_future().wait();
    }

    EXPECT_TRUE(state.finished);
}

INSTANTIATE_TEST_SUITE_P(
    Waits, KFThreadOwnEnd,
    testing::Values(
        [](KFThread& thread) { thread.stop(); },
        [](KFThread& thread) { KFThread::waitForThreadTermination(&thread); }));
