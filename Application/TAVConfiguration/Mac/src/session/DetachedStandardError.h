#pragma once

#include "FileDescriptor.h"

/// Takes a pipe or a socket away from the process's standard error, which drops what is written
/// from then on; any other standard error stays as it is.
///
/// The window's process outlives the one that called it: a reader would wait for the end of the
/// channel as long as the window lives, and once he is gone, the signal that a mere warning of the
/// toolkit raises would end the tool. Until this object ends, the channel is kept aside for a last
/// word.
class DetachedStandardError {
public:
    DetachedStandardError();
    ~DetachedStandardError();

    DetachedStandardError(const DetachedStandardError&) = delete;
    DetachedStandardError& operator=(const DetachedStandardError&) = delete;

    /// Makes what was taken away the standard error again.
    void putBack();

private:
    FileDescriptor m_channel;
};
