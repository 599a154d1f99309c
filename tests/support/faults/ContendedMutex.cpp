#include "ContendedMutex.h"

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <chrono>
#include <thread>
#include <utility>
#include <vector>

#include <pthread.h>

extern "C" {

int realLock(pthread_mutex_t* mutex) __asm__("__real_pthread_mutex_lock");
int realUnlock(pthread_mutex_t* mutex) __asm__("__real_pthread_mutex_unlock");
int realTimedLock(pthread_mutex_t* mutex, const std::timespec* deadline) __asm__(
    "__real_pthread_mutex_timedlock");
int realClockLock(pthread_mutex_t* mutex, clockid_t clock, const std::timespec* deadline) __asm__(
    "__real_pthread_mutex_clocklock");

int lockCalled(pthread_mutex_t* mutex) __asm__("__wrap_pthread_mutex_lock");
int unlockCalled(pthread_mutex_t* mutex) __asm__("__wrap_pthread_mutex_unlock");
int timedLockCalled(pthread_mutex_t* mutex, const std::timespec* deadline) __asm__(
    "__wrap_pthread_mutex_timedlock");
int clockLockCalled(pthread_mutex_t* mutex, clockid_t clock, const std::timespec* deadline) __asm__(
    "__wrap_pthread_mutex_clocklock");

} // extern "C"

namespace {

struct Wait {
    pthread_t thread;
    const pthread_mutex_t* mutex;
};

/// The waits that are under way.
class Waits {
public:
    void begin(const pthread_mutex_t* mutex)
    {
        realLock(&m_guard);
        m_waits.push_back({pthread_self(), mutex});
        realUnlock(&m_guard);
    }
    void end(const pthread_mutex_t* mutex)
    {
        realLock(&m_guard);
        std::erase_if(m_waits, [mutex](const Wait& wait) {
            return wait.mutex == mutex && pthread_equal(wait.thread, pthread_self()) != 0;
        });
        realUnlock(&m_guard);
    }
    bool contain(const std::function<bool(const Wait&)>& meant)
    {
        realLock(&m_guard);
        const bool found = std::any_of(m_waits.begin(), m_waits.end(), meant);
        realUnlock(&m_guard);
        return found;
    }

private:
    pthread_mutex_t m_guard = PTHREAD_MUTEX_INITIALIZER;
    std::vector<Wait> m_waits;
};

// Never destroyed: background threads may still wait while the process ends.
Waits& waits()
{
    static Waits& s_waits = *new Waits;
    return s_waits;
}

std::atomic<MutexWatch*> s_watch = nullptr;

template<typename Lock>
int lockOrWait(pthread_mutex_t* mutex, const std::timespec* deadline, Lock lock)
{
    const int result = pthread_mutex_trylock(mutex);
    if (result != EBUSY)
        return result;
    MutexWatch::meet(mutex, deadline);
    waits().begin(mutex);
    const int lateResult = lock();
    waits().end(mutex);
    return lateResult;
}

bool hasEnded(const std::future<void>& end)
{
    return end.wait_for(std::chrono::seconds(0)) == std::future_status::ready;
}

void untilItWaitsOrEnds(pthread_t thread, const std::future<void>& end)
{
    const auto isItsWait = [thread](const Wait& wait) {
        return pthread_equal(wait.thread, thread) != 0;
    };
    while (!waits().contain(isItsWait) && !hasEnded(end))
        std::this_thread::yield();
}

bool canBeHadByAnotherThread(KFMutex& mutex)
{
    bool had = false;
    std::thread([&mutex, &had] {
        had = mutex.tryacquire();
        if (had)
            realUnlock(mutex.getHandle());
    }).join();
    return had;
}

} // namespace

extern "C" {

int lockCalled(pthread_mutex_t* mutex)
{
    return lockOrWait(mutex, nullptr, [mutex] { return realLock(mutex); });
}

int timedLockCalled(pthread_mutex_t* mutex, const std::timespec* deadline)
{
    return lockOrWait(mutex, deadline, [=] { return realTimedLock(mutex, deadline); });
}

int clockLockCalled(pthread_mutex_t* mutex, clockid_t clock, const std::timespec* deadline)
{
    return lockOrWait(mutex, deadline, [=] { return realClockLock(mutex, clock, deadline); });
}

int unlockCalled(pthread_mutex_t* mutex)
{
    const int result = realUnlock(mutex);
    MutexWatch::leave(mutex);
    return result;
}

} // extern "C"

bool isWaitedFor(KFMutex& mutex)
{
    return waits().contain([&](const Wait& wait) { return wait.mutex == mutex.getHandle(); });
}

void waitUntilWaitedFor(KFMutex& mutex)
{
    while (!isWaitedFor(mutex))
        std::this_thread::yield();
}

std::future<void> startUntilItWaits(const std::function<void()>& action)
{
    std::promise<pthread_t> started;
    std::future<void> end = std::async(std::launch::async, [&started, action] {
        started.set_value(pthread_self());
        action();
    });
    untilItWaitsOrEnds(started.get_future().get(), end);
    return end;
}

bool waitsFor(
    KFMutex& mutex, const std::function<void()>& action, const std::function<void()>& preparation)
{
    std::promise<pthread_t> prepared;
    std::promise<void> held;
    const std::future<void> end = std::async(std::launch::async, [&] {
        preparation();
        prepared.set_value(pthread_self());
        held.get_future().wait();
        action();
    });
    const pthread_t thread = prepared.get_future().get();
    mutex.acquire();
    held.set_value();
    untilItWaitsOrEnds(thread, end);
    const bool waited = !hasEnded(end);
    mutex.release();
    end.wait();
    return waited;
}

MutexWatch::MutexWatch(KFMutex& mutex) : m_mutex(mutex)
{
    s_watch = this;
}

MutexWatch::~MutexWatch()
{
    s_watch = nullptr;
}

void MutexWatch::onNextWait(std::function<void()> action)
{
    m_onNextWait = std::move(action);
}

void MutexWatch::onEachRelease(std::function<void()> action)
{
    m_onEachRelease = std::move(action);
}

void MutexWatch::meet(const pthread_mutex_t* mutex, const std::timespec* deadline)
{
    MutexWatch* const watch = s_watch;
    if (watch == nullptr || watch->m_mutex.getHandle() != mutex)
        return;
    if (deadline != nullptr)
        watch->m_deadline = *deadline;
    if (watch->m_onNextWait)
        std::exchange(watch->m_onNextWait, nullptr)();
}

// What the action itself releases is not watched.
void MutexWatch::leave(const pthread_mutex_t* mutex)
{
    thread_local bool s_isActing = false;
    MutexWatch* const watch = s_watch;
    if (s_isActing || watch == nullptr || watch->m_mutex.getHandle() != mutex ||
        !watch->m_onEachRelease || !canBeHadByAnotherThread(watch->m_mutex))
        return;
    s_isActing = true;
    watch->m_onEachRelease();
    s_isActing = false;
}
