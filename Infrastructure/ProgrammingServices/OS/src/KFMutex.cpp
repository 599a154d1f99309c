#include "KFMutex.h"

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
