#include "PrivilegedLauncher.h"

#include "AuthorizationFailure.h"
#include "CallMarker.h"
#include "ElevatedEnvironment.h"
#include "Pipe.h"
#include "ProgramStart.h"

#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstring>
#include <fstream>
#include <memory>
#include <optional>
#include <thread>
#include <utility>

#include <sys/wait.h>
#include <unistd.h>

namespace {

/// What pkexec ends with when it started nothing.
constexpr int DISMISSED = 126;
constexpr int NOT_STARTED = 127;

AuthorizationStatus cannotStart(const std::string& reason)
{
    CallMarker marker("cannotStart");
    return AuthorizationFailure::tell(
        AuthorizationStatus::toolExecuteFailure, "start with administrator rights", reason);
}

void awaitEndOf(const FileDescriptor& readEnd)
{
    CallMarker marker("awaitEndOf");
    char ignored = 0;
    ssize_t count = 0;
    do
        count = read(readEnd.get(), &ignored, 1);
    while (count > 0 || (count < 0 && errno == EINTR));
}

/// The first word of a process's command line: empty while the process ends or is not yet loaded,
/// and where the system hides other users' processes.
std::string commandOf(pid_t process)
{
    CallMarker marker("commandOf");
    std::ifstream in("/proc/" + std::to_string(process) + "/cmdline", std::ios::binary);
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

/// Whether the child ends within the moment that a process takes, at the most, from the closing of
/// its descriptors to its end.
bool isEnding(pid_t child)
{
    CallMarker marker("isEnding");
    constexpr std::chrono::milliseconds A_MOMENT(1000);
    constexpr std::chrono::milliseconds BETWEEN_LOOKS(5);
    const auto deadline = std::chrono::steady_clock::now() + A_MOMENT;
    while (isRunning(child)) {
        if (std::chrono::steady_clock::now() > deadline)
            return false;
        std::this_thread::sleep_for(BETWEEN_LOOKS);
    }
    return true;
}

bool hasBecome(pid_t elevator, const std::string& program)
{
    CallMarker marker("hasBecome");
    return commandOf(elevator) == program || !isEnding(elevator);
}

/// What the end of the elevator says; any status that is not the elevator's own is that of a
/// program that has begun and ended already.
AuthorizationStatus statusOfEnd(pid_t elevator)
{
    CallMarker marker("statusOfEnd");
    int status = 0;
    pid_t ended = -1;
    do
        ended = waitpid(elevator, &status, 0);
    while (ended < 0 && errno == EINTR);
    if (ended < 0)
        return cannotStart(std::string("cannot wait for pkexec: ") + std::strerror(errno));
    if (WIFSIGNALED(status))
        return cannotStart("pkexec was ended by signal " + std::to_string(WTERMSIG(status)));
    if (WEXITSTATUS(status) == NOT_STARTED)
        return cannotStart("pkexec refused");
    return WEXITSTATUS(status) == DISMISSED ? AuthorizationStatus::canceled
                                            : AuthorizationStatus::success;
}

} // namespace

PrivilegedLauncher::PrivilegedLauncher(std::string elevator) : m_elevator(std::move(elevator))
{
    CallMarker marker("PrivilegedLauncher", "PrivilegedLauncher::constructor", true, this);
}

PrivilegedLauncher::~PrivilegedLauncher()
{
    CallMarker marker("PrivilegedLauncher", "PrivilegedLauncher::destructor", false, this);
}

AuthorizationStatus PrivilegedLauncher::launch(
    const std::string& program, const char* const* arguments, std::FILE** output) const
{
    CallMarker marker("PrivilegedLauncher::launch", this);
    std::optional<Pipe> programOutput = Pipe::open();
    std::optional<Pipe> begun = Pipe::open();
    if (!programOutput || !begun)
        return cannotStart(std::string("cannot make a pipe: ") + std::strerror(errno));

    // The action is the whole process's; a mask would leave the signal to the other threads.
    std::signal(SIGCHLD, SIG_DFL);
    const std::vector<std::string> command = commandFor(program, arguments);
    std::unique_ptr<std::FILE, int (*)(std::FILE*)> readEnd(
        fdopen(programOutput->readEnd.get(), "r"), &std::fclose);
    if (readEnd == nullptr)
        return cannotStart(std::string("cannot read a pipe: ") + std::strerror(errno));
    programOutput->readEnd.release();
    pid_t process = 0;
    const int error =
        start(command, std::move(programOutput->writeEnd), std::move(begun->writeEnd), process);
    if (error != 0)
        return cannotStart(command.front() + ": " + std::strerror(error));

    awaitEndOf(begun->readEnd);
    const AuthorizationStatus status =
        hasBegun(process, program) ? AuthorizationStatus::success : statusOfEnd(process);
    if (status == AuthorizationStatus::success)
        *output = readEnd.release();
    return status;
}

// A program that was started directly has begun once the start has succeeded, however it ends.
bool PrivilegedLauncher::hasBegun(pid_t process, const std::string& program) const
{
    CallMarker marker("PrivilegedLauncher::hasBegun", this);
    return m_elevator.empty() || hasBecome(process, program);
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
        for (const std::string& name : ElevatedEnvironment::dispensable())
            programStart.leaveOutOfEnvironment(name);
    }
    return programStart.start(std::move(command), process);
}
