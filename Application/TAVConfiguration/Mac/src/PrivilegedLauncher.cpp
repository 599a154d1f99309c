#include "PrivilegedLauncher.h"

#include "CallMarker.h"
#include "Console.h"
#include "Pipe.h"
#include "ProgramStart.h"

#include <cerrno>
#include <csignal>
#include <cstring>
#include <fstream>
#include <optional>
#include <utility>

#include <sys/wait.h>
#include <unistd.h>

namespace {

/// What pkexec ends with when it started nothing.
constexpr int DISMISSED = 126;
constexpr int NOT_STARTED = 127;

AuthorizationStatus failed(const std::string& reason)
{
    Console::writeError(
        "TavConfiguration: cannot start with administrator rights: " + reason + "\n");
    return AuthorizationStatus::toolExecuteFailure;
}

void awaitEndOf(const FileDescriptor& readEnd)
{
    char ignored = 0;
    ssize_t count = 0;
    do
        count = read(readEnd.get(), &ignored, 1);
    while (count > 0 || (count < 0 && errno == EINTR));
}

/// The first word of a process's command line, which the system shows of other users' processes
/// too: empty while the process ends, nothing where the system hides other users' processes.
std::optional<std::string> commandOf(pid_t process)
{
    std::ifstream in("/proc/" + std::to_string(process) + "/cmdline", std::ios::binary);
    if (!in)
        return std::nullopt;
    std::string command;
    std::getline(in, command, '\0');
    return command;
}

bool isRunning(pid_t child)
{
    siginfo_t info{};
    return waitid(P_PID, static_cast<id_t>(child), &info, WEXITED | WNOHANG | WNOWAIT) == 0 &&
           info.si_pid == 0;
}

bool hasBecome(pid_t elevator, const std::string& program)
{
    const std::optional<std::string> command = commandOf(elevator);
    return command ? *command == program : isRunning(elevator);
}

/// What the end of the elevator says; any status that is not the elevator's own is that of a
/// program that has begun and ended already.
AuthorizationStatus statusOfEnd(pid_t elevator)
{
    int status = 0;
    while (waitpid(elevator, &status, 0) < 0 && errno == EINTR) {
    }
    if (WIFSIGNALED(status))
        return failed("pkexec was ended by signal " + std::to_string(WTERMSIG(status)));
    if (WEXITSTATUS(status) == NOT_STARTED)
        return failed("pkexec refused");
    return WEXITSTATUS(status) == DISMISSED ? AuthorizationStatus::canceled
                                            : AuthorizationStatus::success;
}

} // namespace

PrivilegedLauncher::PrivilegedLauncher(std::string elevator) : m_elevator(std::move(elevator))
{
    CallMarker marker("PrivilegedLauncher", "PrivilegedLauncher::constructor", true, this);
}

AuthorizationStatus PrivilegedLauncher::launch(
    const std::string& program, const char* const* arguments, std::FILE** output) const
{
    CallMarker marker("PrivilegedLauncher::launch", this);
    std::optional<Pipe> programOutput = Pipe::open();
    std::optional<Pipe> begun = Pipe::open();
    if (!programOutput || !begun)
        return failed(std::string("cannot make a pipe: ") + std::strerror(errno));

    // The action is the whole process's; a mask would leave the signal to the other threads.
    std::signal(SIGCHLD, SIG_DFL);
    const std::vector<std::string> command = commandFor(program, arguments);
    pid_t process = 0;
    const int error =
        start(command, std::move(programOutput->writeEnd), std::move(begun->writeEnd), process);
    if (error != 0)
        return failed(command.front() + ": " + std::strerror(error));

    awaitEndOf(begun->readEnd);
    const AuthorizationStatus status =
        hasBecome(process, program) ? AuthorizationStatus::success : statusOfEnd(process);
    if (status == AuthorizationStatus::success)
        *output = fdopen(programOutput->readEnd.release(), "r");
    return status;
}

std::vector<std::string> PrivilegedLauncher::commandFor(
    const std::string& program, const char* const* arguments) const
{
    CallMarker marker("PrivilegedLauncher::commandFor", this);
    std::vector<std::string> command;
    if (!m_elevator.empty())
        command = {m_elevator, "--disable-internal-agent"};
    command.push_back(program);
    for (; *arguments != nullptr; ++arguments)
        command.emplace_back(*arguments);
    return command;
}

int PrivilegedLauncher::start(
    std::vector<std::string> command, FileDescriptor output, FileDescriptor begun,
    pid_t& process) const
{
    CallMarker marker("PrivilegedLauncher::start", this);
    ProgramStart programStart;
    programStart.useAsOutput(output.get());
    if (!m_elevator.empty()) {
        // pkexec marks it close-on-exec just before it becomes the program: that the pipe ends
        // says that the elevator is gone, one way or the other.
        programStart.keepOpen(begun.get());
        // pkexec refuses to run for a shell that /etc/shells does not list; no shell is needed.
        programStart.leaveOutOfEnvironment("SHELL");
    }
    return programStart.start(std::move(command), process);
}
