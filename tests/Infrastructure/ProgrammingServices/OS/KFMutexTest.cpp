#include "KFMutex.h"

#include "KFMutexGuard.h"

#include <cerrno>
#include <ctime>
#include <exception>
#include <thread>
#include <type_traits>

#include <gtest/gtest.h>

namespace {

bool canBeAcquiredByAnotherThread(KFMutex& mutex)
{
    bool acquired = false;
    std::thread([&mutex, &acquired] {
        acquired = mutex.tryacquire();
        if (acquired)
            mutex.release();
    }).join();
    return acquired;
}

class KFMutexOfEitherKind : public testing::TestWithParam<bool> {};

} // namespace

static_assert(std::has_virtual_destructor_v<KFMutex>);

TEST_P(KFMutexOfEitherKind, KeepsOtherThreadsOutFromAcquireToRelease)
{
    KFMutex mutex(GetParam());

    mutex.acquire();
    EXPECT_FALSE(canBeAcquiredByAnotherThread(mutex));
    mutex.release();

    EXPECT_TRUE(canBeAcquiredByAnotherThread(mutex));
}

TEST_P(KFMutexOfEitherKind, IsHeldByAGuardToTheEndOfItsScope)
{
    KFMutex mutex(GetParam());
    {
        const KFMutexGuard guard(mutex);
        EXPECT_FALSE(canBeAcquiredByAnotherThread(mutex));
    }
    EXPECT_TRUE(canBeAcquiredByAnotherThread(mutex));
}

TEST_P(KFMutexOfEitherKind, IsReleasedByAGuardWhoseScopeAnExceptionEnds)
{
    KFMutex mutex(GetParam());
    try {
        const KFMutexGuard guard(mutex);
        throw std::exception();
    } catch (const std::exception&) {
        EXPECT_TRUE(canBeAcquiredByAnotherThread(mutex));
    }
}

TEST_P(KFMutexOfEitherKind, IsReleasedByAGuardThatTakesItOver)
{
    KFMutex mutex(GetParam());
    mutex.acquire();
    {
        const KFMutexGuard guard(mutex, std::adopt_lock);
        EXPECT_FALSE(canBeAcquiredByAnotherThread(mutex));
    }
    EXPECT_TRUE(canBeAcquiredByAnotherThread(mutex));
}

TEST_P(KFMutexOfEitherKind, TryacquireTakesAFreeMutex)
{
    KFMutex mutex(GetParam());

    EXPECT_TRUE(mutex.tryacquire());
    EXPECT_FALSE(canBeAcquiredByAnotherThread(mutex));
    mutex.release();
}

TEST_P(KFMutexOfEitherKind, IsTakenWithinABoundedTimeWhenItIsFree)
{
    KFMutex mutex(GetParam());

    EXPECT_TRUE(mutex.acquireWithin(0));
    EXPECT_FALSE(canBeAcquiredByAnotherThread(mutex));
    mutex.release();
}

TEST_P(KFMutexOfEitherKind, IsNotTakenWithinABoundedTimeWhileAnotherThreadHasIt)
{
    KFMutex mutex(GetParam());
    bool acquired = true;

    mutex.acquire();
    std::thread([&] { acquired = mutex.acquireWithin(0); }).join();
    mutex.release();

    EXPECT_FALSE(acquired);
}

TEST_P(KFMutexOfEitherKind, HandleIsTheMutexItself)
{
    KFMutex mutex(GetParam());

    ASSERT_EQ(pthread_mutex_lock(mutex.getHandle()), 0);
    EXPECT_FALSE(canBeAcquiredByAnotherThread(mutex));
    EXPECT_EQ(pthread_mutex_unlock(mutex.getHandle()), 0);
}

INSTANTIATE_TEST_SUITE_P(Kinds, KFMutexOfEitherKind, testing::Bool());

TEST(KFMutex, RecursiveOneIsReleasedAsOftenAsAcquired)
{
    KFMutex mutex(true);
    mutex.acquire();
    mutex.acquire();

    mutex.release();
    EXPECT_FALSE(canBeAcquiredByAnotherThread(mutex));
    mutex.release();

    EXPECT_TRUE(canBeAcquiredByAnotherThread(mutex));
}

TEST(KFMutex, PlainOneIsNotAcquiredTwiceByOneThread)
{
    KFMutex mutex(false);
    mutex.acquire();
    const std::timespec past{};

    EXPECT_FALSE(mutex.tryacquire());
    EXPECT_EQ(pthread_mutex_timedlock(mutex.getHandle(), &past), ETIMEDOUT);
    mutex.release();
}
