#include "AskedSleep.h"

#include <atomic>
#include <ctime>

namespace {

constexpr std::chrono::nanoseconds c_none(-1);

// Background threads may still sleep while the process ends: nothing here is ever destroyed.
std::atomic<std::chrono::nanoseconds> s_asked = c_none;

} // namespace

extern "C" {

int realNanosleep(const std::timespec* asked, std::timespec* left) __asm__("__real_nanosleep");
int nanosleepCalled(const std::timespec* asked, std::timespec* left) __asm__("__wrap_nanosleep");

int nanosleepCalled(const std::timespec* asked, std::timespec* left)
{
    s_asked = std::chrono::seconds(asked->tv_sec) + std::chrono::nanoseconds(asked->tv_nsec);
    s_asked.notify_all();
    return realNanosleep(asked, left);
}

} // extern "C"

std::chrono::nanoseconds nextAskedSleep()
{
    s_asked = c_none;
    s_asked.wait(c_none);
    return s_asked;
}
