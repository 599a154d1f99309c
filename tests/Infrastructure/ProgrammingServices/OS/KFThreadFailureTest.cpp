#include "CrashReport.h"
#include "KFThread.h"

#include <cerrno>
#include <thread>

#include <gtest/gtest.h>
#include <pthread.h>

// The linker sends these calls here; the first three fail once their flag is set.
namespace {

bool attrInitFails = false;
bool setDetachStateFails = false;
bool createFails = false;
int lastDetachState = -1;
int joins = 0;

class IdleThread : public KFThread {
public:
    IdleThread() : KFThread("idle") {}
    void run() override {}
    void onTerminate() override { ++requests; }

    int requests = 0;
};

class KFThreadFailure : public testing::Test {
protected:
    KFThreadFailure() { joins = 0; }
    void TearDown() override
    {
        attrInitFails = false;
        setDetachStateFails = false;
        createFails = false;
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

int __wrap_pthread_attr_init(pthread_attr_t* attributes)
{
    return attrInitFails ? ENOMEM : __real_pthread_attr_init(attributes);
}

int __wrap_pthread_attr_setdetachstate(pthread_attr_t* attributes, int state)
{
    lastDetachState = state;
    return setDetachStateFails ? EINVAL : __real_pthread_attr_setdetachstate(attributes, state);
}

int __wrap_pthread_create(
    pthread_t* thread, const pthread_attr_t* attributes, void* (*entry)(void*), void* argument)
{
    return createFails ? EAGAIN : __real_pthread_create(thread, attributes, entry, argument);
}

int __wrap_pthread_join(pthread_t thread, void** result)
{
    ++joins;
    return __real_pthread_join(thread, result);
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
