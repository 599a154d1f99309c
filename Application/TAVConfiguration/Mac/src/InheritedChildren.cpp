#include "InheritedChildren.h"

#include "CallMarker.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <fstream>
#include <iterator>
#include <vector>

#include <sys/prctl.h>
#include <sys/wait.h>

namespace {

// Never destroyed: a child may end while the process does.
std::vector<pid_t>& s_children = *new std::vector<pid_t>;
/// The crash handler's, while the signal of children is not its own.
struct sigaction s_crashAction {};

// No call markers from here to onChildSignal(): a signal handler's work.
bool isInherited(pid_t child)
{
    return std::ranges::find(s_children, child) != s_children.end();
}

/// One signal may stand for what became of several children; that of the first one is told alone.
bool hasBecomeOfAnother()
{
    constexpr int ANYTHING = WEXITED | WSTOPPED | WCONTINUED | WNOHANG;
    siginfo_t child{};
    while (waitid(P_ALL, 0, &child, ANYTHING) == 0 && child.si_pid != 0)
        if (!isInherited(child.si_pid))
            return true;
    return false;
}

void onChildSignal(int signal, siginfo_t* info, void* /*context*/)
{
    const int error = errno;
    // What is sent by a process, be it such a child itself, has no code above 0.
    const bool isUnheard = info->si_code > 0 && isInherited(info->si_pid) && !hasBecomeOfAnother();
    errno = error;
    if (!isUnheard)
        s_crashAction.sa_handler(signal);
}

void maskSignalOfChildren(int how)
{
    CallMarker marker("maskSignalOfChildren");
    sigset_t signals{};
    sigemptyset(&signals);
    sigaddset(&signals, SIGCHLD);
    pthread_sigmask(how, &signals, nullptr);
}

} // namespace

void InheritedChildren::note()
{
    CallMarker marker("InheritedChildren::note");
    prctl(PR_SET_CHILD_SUBREAPER, 0);
    // All children are this thread's: it is the one that began the program.
    std::ifstream children("/proc/thread-self/children");
    s_children.assign(std::istream_iterator<pid_t>(children), std::istream_iterator<pid_t>());
    // The threads that are started until the crash handler is there keep the signal blocked: it is
    // left to the others.
    if (!s_children.empty())
        maskSignalOfChildren(SIG_BLOCK);
}

void InheritedChildren::leaveUnheard()
{
    CallMarker marker("InheritedChildren::leaveUnheard");
    if (s_children.empty() || s_crashAction.sa_handler != nullptr)
        return;
    struct sigaction action {};
    action.sa_sigaction = &onChildSignal;
    action.sa_flags = SA_SIGINFO | SA_RESTART;
    sigemptyset(&action.sa_mask);
    sigaction(SIGCHLD, &action, &s_crashAction);
    maskSignalOfChildren(SIG_UNBLOCK);
}
