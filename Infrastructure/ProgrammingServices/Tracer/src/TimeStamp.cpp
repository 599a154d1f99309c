#include "TimeStamp.h"

#include <array>
#include <cstdio>

std::string TimeStamp::now()
{
    std::timespec time{};
    clock_gettime(CLOCK_REALTIME, &time);
    return of(time);
}

std::string TimeStamp::of(const std::timespec& time)
{
    std::tm local{};
    localtime_r(&time.tv_sec, &local);
    const int milliseconds = static_cast<int>(time.tv_nsec / 1000000);
    std::array<char, 64> text{};
    std::snprintf(
        text.data(), text.size(), "[%02d:%02d:%02d-%03d]", local.tm_hour, local.tm_min,
        local.tm_sec, milliseconds);
    return text.data();
}
