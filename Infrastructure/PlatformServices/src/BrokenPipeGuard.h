#pragma once

#include <csignal>

/// For one scope, what this thread writes to a pipe or socket that nobody reads any more is
/// dropped: the SIGPIPE that it raises is not delivered, and none is left pending. Started programs
/// would inherit that, so none is started in the scope.
class BrokenPipeGuard {
public:
    BrokenPipeGuard();
    ~BrokenPipeGuard();

    BrokenPipeGuard(const BrokenPipeGuard&) = delete;
    BrokenPipeGuard& operator=(const BrokenPipeGuard&) = delete;

private:
    sigset_t m_brokenPipe{};
    sigset_t m_mask{};
    bool m_wasPending = false;
};
