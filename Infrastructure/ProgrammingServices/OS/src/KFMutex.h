#pragma once

#include <pthread.h>

/// A POSIX mutex; callers pair acquire() and release() by hand or with a KFMutexGuard, and no
/// result is checked.
///
/// A recursive one may be acquired again by the thread that holds it, and is released as often;
/// a second acquire of the other kind never returns.
class KFMutex {
public:
    explicit KFMutex(bool recursive);
    virtual ~KFMutex();

    KFMutex(const KFMutex&) = delete;
    KFMutex& operator=(const KFMutex&) = delete;

    void acquire();
    void release();
    /// True when the lock was taken; never waits.
    bool tryacquire();
    /// True when the lock was taken; waits for it no longer than the seconds, also when somebody
    /// sets the clock meanwhile.
    bool acquireWithin(unsigned int seconds);
    pthread_mutex_t* getHandle() { return &m_mutex; }

private:
    pthread_mutexattr_t m_attr{};
    pthread_mutex_t m_mutex{};
};
