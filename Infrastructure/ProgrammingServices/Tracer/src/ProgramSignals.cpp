#include "ProgramSignals.h"

#include <array>
#include <csignal>
#include <cstddef>

namespace {

struct ProgramSignal {
    int host;
    const char* name; ///< null for a signal that reports do not name
};

// The row is the program's number. 7 and 29 have no namesake on this host: they stand for the two
// host signals that have none in the program's set.
constexpr std::array<ProgramSignal, ProgramSignals::LAST + 1> SIGNALS{{
    {0, nullptr},
    {SIGHUP, "SIGNAL_HANG_UP"},
    {SIGINT, "SIGNAL_INTERRUPT"},
    {SIGQUIT, "SIGNAL_QUIT"},
    {SIGILL, "SIGNAL_ILLEGAL_INSTRUCTION"},
    {SIGTRAP, "SIGNAL_TRACE_TRAP"},
    {SIGABRT, "SIGNAL_ABORT"},
    {SIGSTKFLT, nullptr},
    {SIGFPE, "SIGNAL_FLT"},
    {SIGKILL, "SIGNAL_KILL"},
    {SIGBUS, "SIGNAL_BUS_ERROR"},
    {SIGSEGV, "SIGNAL_SEGMENTATION_FAULT"},
    {SIGSYS, "SIGNAL_BAD_ARGUMENT_SYSTEM_CALL"},
    {SIGPIPE, "SIGNAL_WRITE_PIPE_WITH_NO_READER"},
    {SIGALRM, "SIGNAL_ALARM_CLOCK"},
    {SIGTERM, "SIGNAL_SOTWARE_TERMINATION"}, // Kept: spelled so
    {SIGURG, "SIGNAL_URG_ON_IO_CHANNEL"},
    {SIGSTOP, "SIGNAL_STOP"},
    {SIGTSTP, nullptr},
    {SIGCONT, "SIGNAL_CONTINUE"},
    {SIGCHLD, "SIGNAL_SIGCHLD"},
    {SIGTTIN, "SIGNAL_SIGTTIN"},
    {SIGTTOU, "SIGNAL_SIGTTOU"},
    {SIGIO, nullptr},
    {SIGXCPU, nullptr},
    {SIGXFSZ, nullptr},
    {SIGVTALRM, nullptr},
    {SIGPROF, nullptr},
    {SIGWINCH, "SIGNAL_WINDOW_SIZE_CHANGE"},
    {SIGPWR, nullptr},
    {SIGUSR1, nullptr},
}};

bool isInSet(int signal)
{
    return signal >= ProgramSignals::FIRST && signal <= ProgramSignals::LAST;
}

const ProgramSignal& row(int signal)
{
    return SIGNALS[static_cast<std::size_t>(signal)];
}

} // namespace

int ProgramSignals::toHost(int signal)
{
    return isInSet(signal) ? row(signal).host : -1;
}

int ProgramSignals::fromHost(int hostSignal)
{
    for (int signal = FIRST; signal <= LAST; ++signal) {
        if (row(signal).host == hostSignal)
            return signal;
    }
    return 0;
}

std::string ProgramSignals::name(int signal)
{
    if (isInSet(signal) && row(signal).name != nullptr)
        return row(signal).name;
    return "UNKNOWN SIGNAL (" + std::to_string(signal) + ")";
}
