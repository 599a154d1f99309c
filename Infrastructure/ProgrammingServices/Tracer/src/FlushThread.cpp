#include "FlushThread.h"

#include <utility>

// As the last owner the thread itself is here, whose end nobody else can wait for.
FlushThread::~FlushThread()
{
    if (pthread_equal(pthread_self(), getHandle()) != 0)
        pthread_detach(pthread_self());
}

bool FlushThread::start()
{
    m_ownOfThread = weak_from_this().lock();
    const bool started = KFThread::start();
    if (!started)
        m_ownOfThread.reset();
    return started;
}

void FlushThread::run()
{
    // The object is needed behind this function, too, until the thread is gone.
    thread_local const std::shared_ptr<FlushThread> s_own = std::move(m_ownOfThread);
    while (isRunning()) {
        sleep(1);
        if (!writePending())
            return;
    }
}
