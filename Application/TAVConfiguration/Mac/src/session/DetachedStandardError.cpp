#include "DetachedStandardError.h"

#include "CallMarker.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

bool isChannel(int descriptor)
{
    struct stat status {};
    return fstat(descriptor, &status) == 0 &&
           (S_ISFIFO(status.st_mode) || S_ISSOCK(status.st_mode));
}

/// Nothing when the standard error is no channel to a reader.
FileDescriptor channelOfStandardError()
{
    CallMarker marker("channelOfStandardError");
    return FileDescriptor(
        isChannel(STDERR_FILENO) ? fcntl(STDERR_FILENO, F_DUPFD_CLOEXEC, STDERR_FILENO + 1) : -1);
}

} // namespace

DetachedStandardError::DetachedStandardError() : m_channel(channelOfStandardError())
{
    CallMarker marker("DetachedStandardError", "DetachedStandardError::constructor", true, this);
    if (!m_channel.isOpen())
        return;
    const FileDescriptor nowhere(open("/dev/null", O_WRONLY | O_CLOEXEC));
    if (nowhere.isOpen())
        dup2(nowhere.get(), STDERR_FILENO);
}

DetachedStandardError::~DetachedStandardError()
{
    CallMarker marker("DetachedStandardError", "DetachedStandardError::destructor", false, this);
}

void DetachedStandardError::putBack()
{
    CallMarker marker("DetachedStandardError::putBack", this);
    if (m_channel.isOpen())
        dup2(m_channel.get(), STDERR_FILENO);
}
