#pragma once

#include "KFMutex.h"

#include <chrono>
#include <functional>
#include <future>
#include <thread>

/// Whether a thread waits for the mutex, as the C library notes it in there.
inline bool isWaitedFor(KFMutex& mutex)
{
    constexpr int lockedWithWaiters = 2;
    return __atomic_load_n(&mutex.getHandle()->__data.__lock, __ATOMIC_RELAXED) ==
           lockedWithWaiters;
}

inline void waitUntilWaitedFor(KFMutex& mutex)
{
    while (!isWaitedFor(mutex))
        std::this_thread::yield();
}

/// Starts the action on another thread, and returns once it waits for the mutex, which the caller
/// holds, or has ended.
inline std::future<void> startUntilItWaits(KFMutex& mutex, const std::function<void()>& action)
{
    std::future<void> end = std::async(std::launch::async, action);
    while (!isWaitedFor(mutex) &&
           end.wait_for(std::chrono::seconds(0)) != std::future_status::ready)
        std::this_thread::yield();
    return end;
}
