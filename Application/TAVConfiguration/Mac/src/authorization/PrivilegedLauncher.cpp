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
#include <span>
#include <sstream>
#include <thread>
#include <utility>

#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

/// What pkexec ends with when it started nothing.
constexpr int DISMISSED = 126;
constexpr int NOT_STARTED = 127;

/// Its path and its option, before the words of the program.
constexpr std::size_t ELEVATOR_WORDS = 2;

AuthorizationStatus cannotStart(const std::string& reason)
{
    CallMarker marker("cannotStart");
    return AuthorizationFailure::tell(
        AuthorizationStatus::toolExecuteFailure, "start with administrator rights", reason);
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
    *output = nullptr;
    Pipe programOutput;
    Pipe begun;
    int error = programOutput.open();
    if (error == 0)
        error = begun.open();
    if (error != 0)
        return cannotStart(std::string("cannot make a pipe: ") + std::strerror(error));

    // The action is the whole process's; a mask would leave the signal to the other threads.
    std::signal(SIGCHLD, SIG_DFL);
    const std::vector<std::string> command = commandFor(program, arguments);
    std::unique_ptr<std::FILE, int (*)(std::FILE*)> readEnd(
        fdopen(programOutput.readEnd.get(), "r"), &std::fclose);
    if (readEnd == nullptr)
        return cannotStart(std::string("cannot read a pipe: ") + std::strerror(errno));
    programOutput.readEnd.release();
    pid_t process = 0;
    error = start(command, std::move(programOutput.writeEnd), std::move(begun.writeEnd), process);
    if (error != 0)
        return cannotStart(command.front() + ": " + std::strerror(error));

    const AuthorizationStatus status = hasBegun(process, command, begun.readEnd)
                                           ? AuthorizationStatus::success
                                           : statusOfEnd(process);
    if (status == AuthorizationStatus::success)
        *output = readEnd.release();
    return status;
}

// A program that was started directly has begun once the start has succeeded, however it ends.
bool PrivilegedLauncher::hasBegun(
    pid_t process, const std::vector<std::string>& command, const FileDescriptor& begun) const
{
    CallMarker marker("PrivilegedLauncher::hasBegun", this);
    return m_elevator.empty() || hasBecomeProgram(process, command, begun);
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
        // pkexec marks it close-on-exec just before it becomes the program; what it leaves running,
        // as a module of PAM may, keeps it open.
        programStart.keepOpen(begun.get());
        // pkexec refuses to run for a shell that /etc/shells does not list; no shell is needed.
        programStart.leaveOutOfEnvironment("SHELL");
        for (const std::string& name : ElevatedEnvironment::dispensable())
            programStart.leaveOutOfEnvironment(name);
    }
    return programStart.start(std::move(command), process);
}
