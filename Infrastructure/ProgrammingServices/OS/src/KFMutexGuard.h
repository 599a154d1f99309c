#pragma once

#include "KFMutex.h"

#include <mutex>

/// Holds a mutex for the scope that it stands in, also when an exception ends that scope.
class KFMutexGuard {
public:
    explicit KFMutexGuard(KFMutex& mutex) : m_mutex(mutex) { m_mutex.acquire(); }
    /// For a mutex that the caller has acquired already.
    KFMutexGuard(KFMutex& mutex, std::adopt_lock_t /*acquired*/) : m_mutex(mutex) {}
    ~KFMutexGuard() { m_mutex.release(); }

    KFMutexGuard(const KFMutexGuard&) = delete;
    KFMutexGuard& operator=(const KFMutexGuard&) = delete;

private:
    KFMutex& m_mutex;
};
