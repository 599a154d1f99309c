#pragma once

#include <csignal>

/// Whatever the process is made to do on a signal within one scope, as by a library that it calls:
/// at the end it does again what it did at the beginning.
class KeptSignalAction {
public:
    explicit KeptSignalAction(int signal);
    ~KeptSignalAction();

    KeptSignalAction(const KeptSignalAction&) = delete;
    KeptSignalAction& operator=(const KeptSignalAction&) = delete;

private:
    int m_signal;
    struct sigaction m_action {};
};
