#include "InheritedState.h"

#include "CallMarker.h"
#include "InheritedChildren.h"

#include <csignal>

#include <fcntl.h>
#include <unistd.h>

namespace {

void unblockSignals()
{
    CallMarker marker("unblockSignals");
    sigset_t none{};
    sigemptyset(&none);
    pthread_sigmask(SIG_SETMASK, &none, nullptr);
}

void openStandardStreams()
{
    CallMarker marker("openStandardStreams");
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        // The lowest free number is given: that of the stream, since those below it are taken.
        if (fcntl(stream, F_GETFD) < 0)
            static_cast<void>(open("/dev/null", O_RDWR));
    }
}

} // namespace

void InheritedState::takeBack()
{
    CallMarker marker("InheritedState::takeBack");
    unblockSignals();
    openStandardStreams();
    InheritedChildren::note();
}
