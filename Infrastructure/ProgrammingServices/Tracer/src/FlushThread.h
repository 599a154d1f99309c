#pragma once

#include "KFThread.h"

#include <memory>

/// Writes the pending lines of an output once a second. It has no name, so that traces do not show
/// it.
///
/// The output owns it, and so does its thread until that is gone: an output does not wait for a
/// thread that goes on without it.
class FlushThread : public KFThread, public std::enable_shared_from_this<FlushThread> {
public:
    FlushThread() : KFThread(nullptr) {}
    ~FlushThread() override;

    /// As KFThread's; the thread shares an object that others share.
    bool start();

    /// The last call of an output that goes: on return no pass for it is under way, and none
    /// follows. A pass waits for the mutex of the output for a second at most, so that a thread
    /// that never releases it may call this, too.
    virtual void letGo() = 0;

    void run() override;

private:
    /// One pass; false when none shall follow.
    virtual bool writePending() = 0;

    std::shared_ptr<FlushThread> m_ownOfThread; ///< on its way to the thread
};
