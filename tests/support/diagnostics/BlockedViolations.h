#pragma once

#include <csignal>

/// Nothing of a violation is reported before the scope ends, so that the checks behind it run too.
class BlockedViolations {
public:
    BlockedViolations()
    {
        sigemptyset(&m_signals);
        sigaddset(&m_signals, SIGUSR1);
        pthread_sigmask(SIG_BLOCK, &m_signals, nullptr);
    }
    ~BlockedViolations() { pthread_sigmask(SIG_UNBLOCK, &m_signals, nullptr); }

    BlockedViolations(const BlockedViolations&) = delete;
    BlockedViolations& operator=(const BlockedViolations&) = delete;

private:
    sigset_t m_signals{};
};
