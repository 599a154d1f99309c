#pragma once

#include "TraceMsgType.h"

/// Writes the trace lines of one thread.
class ThreadTracer {
public:
    /// Writes one message line inside the current call.
    void PrintMsg(TraceMsgType type, const char* format, ...) __attribute__((format(printf, 3, 4)));
};
