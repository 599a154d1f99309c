#pragma once

#include "KFThread.h"

/// Writes the published tracer's pending lines once a second, for as long as there is a tracer.
class TracerFlushThread : public KFThread {
public:
    TracerFlushThread() : KFThread(nullptr) {}

    void run() override;
};
