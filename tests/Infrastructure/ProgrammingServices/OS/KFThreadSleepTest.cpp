#include "KFThread.h"

#include <ctime>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

// The linker sends the system's sleep here: the tests see what is asked of it and never wait.
namespace {

struct Sleep {
    std::time_t seconds;
    long nanoseconds;

    bool operator==(const Sleep&) const = default;
};

std::vector<Sleep> sleeps;

class KFThreadSleep : public testing::Test {
protected:
    KFThreadSleep() { sleeps.clear(); }
};

} // namespace

// NOLINTNEXTLINE(bugprone-reserved-identifier): the name that the linker's --wrap gives
extern "C" int __wrap_nanosleep(const std::timespec* time, std::timespec* /*rest*/)
{
    sleeps.push_back({time->tv_sec, time->tv_nsec});
    return 0;
}

TEST_F(KFThreadSleep, OfNoMillisecondsReturnsAtOnce)
{
    KFThread::msleep(0);

    EXPECT_THAT(sleeps, testing::Each(Sleep{0, 0}));
}

TEST_F(KFThreadSleep, LastsTheMilliseconds)
{
    KFThread::msleep(1500);

    EXPECT_THAT(sleeps, testing::ElementsAre(Sleep{1, 500000000}));
}

TEST_F(KFThreadSleep, LastsTheSeconds)
{
    KFThread::sleep(2);

    EXPECT_THAT(sleeps, testing::ElementsAre(Sleep{2, 0}));
}
