#pragma once

#include "FlushThread.h"

/// Writes for whichever tracer is published, for as long as there is one.
class TracerFlushThread : public FlushThread {
public:
    void letGo() override;

private:
    bool writePending() override;
};
