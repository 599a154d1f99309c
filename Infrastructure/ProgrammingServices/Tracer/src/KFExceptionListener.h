#pragma once

#include <string>

/// Hears of a crash or a contract violation before the process ends.
class KFExceptionListener {
public:
    virtual ~KFExceptionListener() = default;
    /// Called inside the signal handler, on the thread that received the signal.
    virtual void onReport(const std::string& message) = 0;
};
