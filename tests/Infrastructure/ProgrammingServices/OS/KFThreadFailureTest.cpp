#include "BlockedViolations.h"
#include "CrashReport.h"
#include "KFThread.h"

#include <atomic>
#include <cerrno>
#include <cstdio>
#include <functional>
#include <future>
#include <thread>
#include <utility>

#include <gtest/gtest.h>
#include <pthread.h>

// The linker sends these calls here; they fail while their flag is set.
namespace {

std::atomic<bool> attrInitFails = false;
bool setDetachStateFails = false;
bool createFails = false;
bool joinFails = false;
int lastDetachState = -1;
std::atomic<int> joins = 0;
std::function<void()> onJoin;    // done before each
std::function<void()> onCreated; // done before the thread that starts it goes on
std::atomic<bool> madeAttributes = false;
std::atomic<bool> usedUnmadeAttributes = false;

void useAttributes(const pthread_attr_t* attributes)
{
    if (attributes != nullptr && !madeAttributes)
        usedUnmadeAttributes = true;
}

class IdleThread : public KFThread {
public:
    IdleThread() : KFThread("idle") {}
    void run() override {}
    void onTerminate() override { ++requests; }

    int requests = 0;
};

/// Stops itself once its start is over.
class SelfStoppingThread : public KFThread {
public:
    SelfStoppingThread() : KFThread("worker") {}
    void run() override
    {
        isStarted.wait(false);
        stop();
    }

    std::atomic<bool> isStarted = false;
};

/// Starts itself at once.
class SelfStartingThread : public KFThread {
public:
    SelfStartingThread() : KFThread("worker") {}
    void run() override
    {
        ++bodies;
        if (bodies == 1)
            startedAnother.set_value(start());
    }

    std::atomic<int> bodies = 0;
    std::promise<bool> startedAnother;
};

void runAThreadWithBlockedViolations()
{
    const BlockedViolations blocked;
    {
        IdleThread thread;
        if (!thread.start())
            std::fputs("not started\n", stderr);
        thread.stop();
        if (thread.isRunning())
            std::fputs("not run\n", stderr);
    }
    if (usedUnmadeAttributes)
        std::fputs("used what was not made\n", stderr);
}

class KFThreadFailure : public testing::Test {
protected:
    KFThreadFailure() { joins = 0; }
    void TearDown() override
    {
        attrInitFails = false;
        setDetachStateFails = false;
        createFails = false;
        joinFails = false;
    }
};

} // namespace

extern "C" {
// NOLINTBEGIN(bugprone-reserved-identifier): the names that the linker's --wrap gives
int __real_pthread_attr_init(pthread_attr_t* attributes);
int __real_pthread_attr_setdetachstate(pthread_attr_t* attributes, int state);
int __real_pthread_create(
    pthread_t* thread, const pthread_attr_t* attributes, void* (*entry)(void*), void* argument);
int __real_pthread_join(pthread_t thread, void** result);
int __real_pthread_attr_destroy(pthread_attr_t* attributes);

int __wrap_pthread_attr_init(pthread_attr_t* attributes)
{
    // Once: a sanitizer asks for attributes of its own later.
    const bool fails = attrInitFails.exchange(false);
    madeAttributes = !fails;
    return fails ? ENOMEM : __real_pthread_attr_init(attributes);
}

int __wrap_pthread_attr_setdetachstate(pthread_attr_t* attributes, int state)
{
    lastDetachState = state;
    useAttributes(attributes);
    return setDetachStateFails ? EINVAL : __real_pthread_attr_setdetachstate(attributes, state);
}

int __wrap_pthread_create(
    pthread_t* thread, const pthread_attr_t* attributes, void* (*entry)(void*), void* argument)
{
    useAttributes(attributes);
    const int result =
        createFails ? EAGAIN : __real_pthread_create(thread, attributes, entry, argument);
    if (onCreated)
        std::exchange(onCreated, nullptr)();
    return result;
}

int __wrap_pthread_join(pthread_t thread, void** result)
{
    ++joins;
    if (onJoin)
        std::exchange(onJoin, nullptr)();
    return joinFails ? EDEADLK : __real_pthread_join(thread, result);
}

int __wrap_pthread_attr_destroy(pthread_attr_t* attributes)
{
    useAttributes(attributes);
    return __real_pthread_attr_destroy(attributes);
}
// NOLINTEND(bugprone-reserved-identifier)
}

TEST_F(KFThreadFailure, AttributesThatCannotBeMadeAreAViolation)
{
    attrInitFails = true;

    EXPECT_CRASH_REPORT(
        IdleThread(), "REQUIRE VIOLATION : !pthread_attr_init(&m_attr) - In File : "
                      "Infrastructure/ProgrammingServices/OS/src/KFThread - At Line : 46");
}

TEST_F(KFThreadFailure, DetachStateThatCannotBeSetIsAViolation)
{
    setDetachStateFails = true;

    EXPECT_CRASH_REPORT(
        IdleThread(),
        "REQUIRE VIOLATION : !pthread_attr_setdetachstate(&m_attr, PTHREAD_CREATE_JOINABLE) - "
        "In File : Infrastructure/ProgrammingServices/OS/src/KFThread - At Line : 47");
}

TEST_F(KFThreadFailure, ThreadsAreJoinable)
{
    lastDetachState = -1;

    const IdleThread thread;

    EXPECT_EQ(lastDetachState, PTHREAD_CREATE_JOINABLE);
}

TEST_F(KFThreadFailure, StartThatFailsSaysSoAndLeavesRunningTrue)
{
    createFails = true;
    IdleThread thread;

    EXPECT_FALSE(thread.start());
    EXPECT_TRUE(thread.isRunning());
}

TEST_F(KFThreadFailure, ThreadThatWasNotCreatedIsNotJoined)
{
    createFails = true;
    IdleThread thread;
    thread.start();

    thread.stop();
    KFThread::waitForThreadTermination(&thread);

    EXPECT_EQ(thread.requests, 1);
    EXPECT_EQ(joins, 0);
}

TEST_F(KFThreadFailure, StartsAfterAFailureToStart)
{
    createFails = true;
    IdleThread thread;
    thread.start();
    createFails = false;

    EXPECT_TRUE(thread.start());
    thread.stop();

    EXPECT_FALSE(thread.isRunning());
}

TEST_F(KFThreadFailure, ThreadIsJoinedOnceAtMost)
{
    {
        IdleThread thread;
        thread.start();

        thread.stop();
        thread.stop();
        KFThread::waitForThreadTermination(&thread);
        EXPECT_EQ(thread.requests, 2);
    }

    EXPECT_EQ(joins, 1);
}

TEST_F(KFThreadFailure, ThreadWhoseBodyHasReturnedIsJoinedByTheDestructor)
{
    {
        IdleThread thread;
        thread.start();
        while (thread.isRunning())
            std::this_thread::yield();
    }

    EXPECT_EQ(joins, 1);
}

TEST_F(KFThreadFailure, ThreadThatCouldNotBeJoinedIsJoinedByTheDestructor)
{
    {
        IdleThread thread;
        thread.start();
        while (thread.isRunning())
            std::this_thread::yield();
        joinFails = true;
        thread.stop();
        joinFails = false;
    }

    EXPECT_EQ(joins, 2);
}

TEST_F(KFThreadFailure, ThreadDoesNotJoinItself)
{
    {
        SelfStoppingThread thread;
        thread.start();
        thread.isStarted = true;
        thread.isStarted.notify_all();
        while (thread.isRunning())
            std::this_thread::yield();
        EXPECT_EQ(joins, 0);
    }

    EXPECT_EQ(joins, 1);
}

TEST_F(KFThreadFailure, WhoeverStopsAThreadThatIsWaitedForWaitsToo)
{
    IdleThread thread;
    thread.start();
    std::promise<void> stops;
    std::atomic<bool> hasStopped = false;
    bool hadStoppedAtTheJoin = true;
    std::thread other;
    onJoin = [&] {
        other = std::thread([&] {
            stops.set_value();
            thread.stop();
            hasStopped = true;
        });
        stops.get_future().wait();
        KFThread::msleep(50); // gives one that does not wait the time to be noticed
        hadStoppedAtTheJoin = hasStopped;
    };

    KFThread::waitForThreadTermination(&thread);
    other.join();

    EXPECT_FALSE(hadStoppedAtTheJoin);
    EXPECT_EQ(joins, 1);
}

TEST_F(KFThreadFailure, BodyDoesNotStartAnotherAlsoWhileItsStartIsUnderWay)
{
    SelfStartingThread thread;
    bool startedAnother = true;
    onCreated = [&] { startedAnother = thread.startedAnother.get_future().get(); };

    EXPECT_TRUE(thread.start());
    thread.stop();

    EXPECT_FALSE(startedAnother);
    EXPECT_EQ(thread.bodies, 1);
}

TEST_F(KFThreadFailure, ThreadWithoutAttributesRunsWhereViolationsAreBlocked)
{
    attrInitFails = true;

    EXPECT_CRASH_REPORT(
        runAThreadWithBlockedViolations(),
        "REQUIRE VIOLATION : !pthread_attr_init(&m_attr) - In File : "
        "Infrastructure/ProgrammingServices/OS/src/KFThread - At Line : 46");
}

TEST_F(KFThreadFailure, ThreadWithoutADetachStateRunsWhereViolationsAreBlocked)
{
    setDetachStateFails = true;

    EXPECT_CRASH_REPORT(
        runAThreadWithBlockedViolations(),
        "REQUIRE VIOLATION : !pthread_attr_setdetachstate(&m_attr, PTHREAD_CREATE_JOINABLE) - "
        "In File : Infrastructure/ProgrammingServices/OS/src/KFThread - At Line : 47");
}
