#pragma once

#include "KFMutex.h"

#include <ctime>
#include <functional>
#include <future>

/// Tells when a thread waits for a mutex that another one holds, in a test that links to
/// tav::contended_mutex: there the linker leads the code's locks to functions that note it.

/// Whether a thread waits for the mutex.
bool isWaitedFor(KFMutex& mutex);
void waitUntilWaitedFor(KFMutex& mutex);

/// Starts the action on another thread, and returns once that one waits for a mutex, or has ended.
std::future<void> startUntilItWaits(const std::function<void()>& action);

/// Whether the action waits for the mutex while another thread holds it. It is done on a thread of
/// its own, as is what prepares it, before the mutex is held.
bool waitsFor(
    KFMutex& mutex, const std::function<void()>& action,
    const std::function<void()>& preparation = [] {});

/// Does something when the code comes to a point where threads meet at the mutex; at most one
/// object at a time.
class MutexWatch {
public:
    explicit MutexWatch(KFMutex& mutex);
    ~MutexWatch();

    MutexWatch(const MutexWatch&) = delete;
    MutexWatch& operator=(const MutexWatch&) = delete;

    /// Once: done by the thread that finds the mutex held by another one, before it waits.
    void onNextWait(std::function<void()> action);
    /// Done each time that another thread can have the mutex, by the thread that has released it.
    void onEachRelease(std::function<void()> action);

    /// Until when a thread wanted to wait at most, the last one that did not want to wait for ever.
    const std::timespec& deadline() const { return m_deadline; }

    /// For the functions that stand in for the system's; no deadline for a wait without end.
    static void meet(const pthread_mutex_t* mutex, const std::timespec* deadline);
    static void leave(const pthread_mutex_t* mutex);

private:
    KFMutex& m_mutex;
    std::function<void()> m_onNextWait;
    std::function<void()> m_onEachRelease;
    std::timespec m_deadline{};
};
