#include "PkexecStart.h"

#include "CallMarker.h"
#include "ElevatedEnvironment.h"
#include "ProgramStart.h"

#include <cerrno>
#include <chrono>
#include <cstring>
#include <fstream>
#include <span>
#include <sstream>
#include <thread>
#include <utility>

#include <poll.h>
#include <sys/wait.h>

namespace {

/// What pkexec ends with when it started nothing.
constexpr int DISMISSED = 126;
constexpr int NOT_STARTED = 127;

/// Its path and its option, before the words of the program.
constexpr std::size_t ELEVATOR_WORDS = 2;

AuthorizationOutcome failed(std::string reason)
{
    return {AuthorizationStatus::toolExecuteFailure, std::move(reason)};
}

/// A command line as the system shows it, each word ended by a null.
std::string lineOf(std::span<const std::string> words)
{
    std::string line;
    for (const std::string& word : words)
        line.append(word).push_back('\0');
    return line;
}

/// Empty while the process ends, and where the system hides other users' processes; empty or its
/// parent's while it is not yet loaded.
std::string commandLineOf(pid_t process)
{
    std::ifstream in("/proc/" + std::to_string(process) + "/cmdline", std::ios::binary);
    std::ostringstream line;
    line << in.rdbuf();
    return std::move(line).str();
}

/// Whether nobody holds the write end any more.
bool isClosed(const FileDescriptor& readEnd)
{
    pollfd pipe{readEnd.get(), 0, 0};
    return poll(&pipe, 1, 0) > 0;
}

bool isRunning(pid_t child)
{
    siginfo_t info{};
    return waitid(P_PID, static_cast<id_t>(child), &info, WEXITED | WNOHANG | WNOWAIT) == 0 &&
           info.si_pid == 0;
}

/// Waits until the elevator has become the program, or has ended, whoever else holds the pipe.
/// Where its command line says nothing, the closed pipe says that the elevator is gone, and a
/// process that has not ended a moment later is the program.
bool hasBecomeProgram(
    pid_t elevator, std::span<const std::string> command, const FileDescriptor& begun)
{
    CallMarker marker("hasBecomeProgram");
    const std::string lineOfElevator = lineOf(command);
    const std::string lineOfProgram = lineOf(command.subspan(ELEVATOR_WORDS));
    constexpr std::chrono::milliseconds BETWEEN_LOOKS(20);
    // A second, which a busy machine makes longer as it does with the end that is waited for.
    int looksAtAnEnd = 50;
    while (isRunning(elevator) && looksAtAnEnd > 0) {
        const std::string line = commandLineOf(elevator);
        if (line == lineOfProgram)
            return true;
        if (line != lineOfElevator && isClosed(begun))
            --looksAtAnEnd;
        std::this_thread::sleep_for(BETWEEN_LOOKS);
    }
    return looksAtAnEnd == 0;
}

/// What the end of the elevator says; any status that is not the elevator's own is that of a
/// program that has begun and ended already.
AuthorizationOutcome outcomeOfEnd(pid_t elevator)
{
    CallMarker marker("outcomeOfEnd");
    int status = 0;
    pid_t ended = -1;
    do
        ended = waitpid(elevator, &status, 0);
    while (ended < 0 && errno == EINTR);
    if (ended < 0)
        return failed(std::string("cannot wait for pkexec: ") + std::strerror(errno));
    if (WIFSIGNALED(status))
        return failed("pkexec was ended by signal " + std::to_string(WTERMSIG(status)));
    if (WEXITSTATUS(status) == NOT_STARTED)
        return failed("pkexec refused");
    return {
        WEXITSTATUS(status) == DISMISSED ? AuthorizationStatus::canceled
                                         : AuthorizationStatus::success};
}

} // namespace

PkexecStart::PkexecStart(std::string path) : m_path(std::move(path))
{
    CallMarker marker("PkexecStart", "PkexecStart::constructor", true, this);
}

PkexecStart::~PkexecStart()
{
    CallMarker marker("PkexecStart", "PkexecStart::destructor", false, this);
}

std::vector<std::string> PkexecStart::commandFor(std::vector<std::string> program) const
{
    CallMarker marker("PkexecStart::commandFor", this);
    program.insert(program.begin(), {m_path, "--disable-internal-agent"});
    return program;
}

void PkexecStart::prepare(ProgramStart& start, const FileDescriptor& begun) const
{
    CallMarker marker("PkexecStart::prepare", this);
    // pkexec marks it close-on-exec just before it becomes the program; what it leaves running, as
    // a module of PAM may, keeps it open.
    start.keepOpen(begun.get());
    // pkexec refuses to run for a shell that /etc/shells does not list; no shell is needed.
    start.leaveOutOfEnvironment("SHELL");
    for (const std::string& name : ElevatedEnvironment::dispensable())
        start.leaveOutOfEnvironment(name);
}

AuthorizationOutcome PkexecStart::await(
    pid_t process, const std::vector<std::string>& command, const FileDescriptor& begun) const
{
    CallMarker marker("PkexecStart::await", this);
    return hasBecomeProgram(process, command, begun) ? AuthorizationOutcome{}
                                                     : outcomeOfEnd(process);
}
