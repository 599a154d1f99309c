#include "KFMutex.h"

#include <cerrno>
#include <ctime>

#include <gtest/gtest.h>
#include <pthread.h>

// The linker sends the bounded wait here: the tests see what is asked of it and never wait.
namespace {

int result = 0;
clockid_t askedClock = -1;
std::time_t askedSeconds = 0;

std::time_t secondsNow()
{
    std::timespec now{};
    clock_gettime(CLOCK_MONOTONIC, &now);
    return now.tv_sec;
}

} // namespace

// NOLINTBEGIN(bugprone-reserved-identifier): the name that the linker's --wrap gives
extern "C" int __wrap_pthread_mutex_clocklock(
    pthread_mutex_t* /*mutex*/, clockid_t clock, const std::timespec* deadline)
{
    askedClock = clock;
    askedSeconds = deadline->tv_sec;
    return result;
}
// NOLINTEND(bugprone-reserved-identifier)

TEST(KFMutexClock, BoundsAWaitByTheClockThatNobodySets)
{
    KFMutex mutex(false);
    result = 0;

    const std::time_t before = secondsNow();
    const bool acquired = mutex.acquireWithin(1000);
    const std::time_t after = secondsNow();

    EXPECT_TRUE(acquired);
    EXPECT_EQ(askedClock, CLOCK_MONOTONIC);
    EXPECT_GE(askedSeconds, before + 1000);
    EXPECT_LE(askedSeconds, after + 1000);
}

TEST(KFMutexClock, TellsOfAWaitThatWasInVain)
{
    KFMutex mutex(false);
    result = ETIMEDOUT;

    EXPECT_FALSE(mutex.acquireWithin(1000));
}
