#include "KFMutex.h"

#include <ctime>

namespace {

#ifdef TAV_HAS_MUTEX_CLOCKLOCK
constexpr clockid_t CLOCK = CLOCK_MONOTONIC;

int lockUntil(pthread_mutex_t& mutex, const std::timespec& deadline)
{
    return pthread_mutex_clocklock(&mutex, CLOCK, &deadline);
}
#else
constexpr clockid_t CLOCK = CLOCK_REALTIME;

int lockUntil(pthread_mutex_t& mutex, const std::timespec& deadline)
{
    return pthread_mutex_timedlock(&mutex, &deadline);
}
#endif

} // namespace

KFMutex::KFMutex(bool recursive)
{
    pthread_mutexattr_init(&m_attr);
    if (recursive)
        pthread_mutexattr_settype(&m_attr, PTHREAD_MUTEX_RECURSIVE);
    pthread_mutex_init(&m_mutex, &m_attr);
}

KFMutex::~KFMutex()
{
    pthread_mutex_destroy(&m_mutex);
    pthread_mutexattr_destroy(&m_attr);
}

void KFMutex::acquire()
{
    pthread_mutex_lock(&m_mutex);
}

void KFMutex::release()
{
    pthread_mutex_unlock(&m_mutex);
}

bool KFMutex::tryacquire()
{
    return pthread_mutex_trylock(&m_mutex) == 0;
}

bool KFMutex::acquireWithin(unsigned int seconds)
{
    std::timespec deadline{};
    clock_gettime(CLOCK, &deadline);
    deadline.tv_sec += seconds;
    return lockUntil(m_mutex, deadline) == 0;
}
