#include "BrokenPipeGuard.h"

#include <ctime>

BrokenPipeGuard::BrokenPipeGuard()
{
    sigemptyset(&m_brokenPipe);
    sigaddset(&m_brokenPipe, SIGPIPE);
    sigset_t pending{};
    sigpending(&pending);
    m_wasPending = sigismember(&pending, SIGPIPE) == 1;
    pthread_sigmask(SIG_BLOCK, &m_brokenPipe, &m_mask);
}

BrokenPipeGuard::~BrokenPipeGuard()
{
    const std::timespec atOnce{};
    if (!m_wasPending)
        sigtimedwait(&m_brokenPipe, nullptr, &atOnce);
    pthread_sigmask(SIG_SETMASK, &m_mask, nullptr);
}
