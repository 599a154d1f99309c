#include "TimeStamp.h"

#include <cstdlib>
#include <ctime>
#include <string>

#include <gtest/gtest.h>

namespace {

/// Runs a test in a fixed time zone and puts the process's own back.
class TimeStampInZone : public testing::Test {
protected:
    void TearDown() override
    {
        unsetenv("TZ");
        tzset();
    }

    static void useZone(const char* zone)
    {
        setenv("TZ", zone, 1);
        tzset();
    }
};

} // namespace

TEST_F(TimeStampInZone, IsHourMinuteSecondAndMilliseconds)
{
    useZone("UTC0");
    const std::timespec time{14 * 3600 + 3 * 60 + 7, 42999999};

    EXPECT_EQ(TimeStamp::of(time), "[14:03:07-042]");
}

TEST_F(TimeStampInZone, PadsEachNumberWithZeros)
{
    useZone("UTC0");

    EXPECT_EQ(TimeStamp::of(std::timespec{0, 0}), "[00:00:00-000]");
}

TEST_F(TimeStampInZone, IsInLocalTime)
{
    useZone("TST-5:30");

    EXPECT_EQ(TimeStamp::of(std::timespec{3600, 999999999}), "[06:30:00-999]");
}

TEST_F(TimeStampInZone, NowLiesBetweenTheClockBeforeAndAfter)
{
    useZone("UTC0");
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
