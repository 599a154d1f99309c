#include "TimeStamp.h"

#include "ScopedTimeZone.h"

#include <ctime>
#include <string>

#include <gtest/gtest.h>

TEST(TimeStamp, IsHourMinuteSecondAndMilliseconds)
{
    const ScopedTimeZone zone("UTC0");
    const std::timespec time{14 * 3600 + 3 * 60 + 7, 42999999};

    EXPECT_EQ(TimeStamp::of(time), "[14:03:07-042]");
}

TEST(TimeStamp, PadsEachNumberWithZeros)
{
    const ScopedTimeZone zone("UTC0");

    EXPECT_EQ(TimeStamp::of(std::timespec{0, 0}), "[00:00:00-000]");
}

TEST(TimeStamp, IsInLocalTime)
{
    const ScopedTimeZone zone("TST-5:30");

    EXPECT_EQ(TimeStamp::of(std::timespec{3600, 999999999}), "[06:30:00-999]");
}

TEST(TimeStamp, IsInTheFormerZoneAgainAfterATestInAnotherOne)
{
    const ScopedTimeZone former("TST-2");
    {
        const ScopedTimeZone another("TST-5:30");
    }

    EXPECT_EQ(TimeStamp::of(std::timespec{0, 0}), "[02:00:00-000]");
}

TEST(TimeStamp, NowLiesBetweenTheClockBeforeAndAfter)
{
    const ScopedTimeZone zone("UTC0");
    std::timespec before{};
    std::timespec after{};

    std::string now;
    do { // a stamp has no date: another try when midnight falls between the two readings
        clock_gettime(CLOCK_REALTIME, &before);
        now = TimeStamp::now();
        clock_gettime(CLOCK_REALTIME, &after);
    } while (before.tv_sec / 86400 != after.tv_sec / 86400);

    EXPECT_LE(TimeStamp::of(before), now);
    EXPECT_LE(now, TimeStamp::of(after));
}
