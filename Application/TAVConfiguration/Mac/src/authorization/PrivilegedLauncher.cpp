#include "PrivilegedLauncher.h"

#include "AuthorizationFailure.h"
#include "CallMarker.h"
#include "Pipe.h"
#include "ProgramStart.h"

#include <cerrno>
#include <csignal>
#include <cstring>
#include <utility>

namespace {

AuthorizationOutcome failed(const std::string& what, int error)
{
    return {AuthorizationStatus::toolExecuteFailure, what + ": " + std::strerror(error)};
}

std::vector<std::string> wordsOf(const std::string& program, const char* const* arguments)
{
    std::vector<std::string> words{program};
    for (; *arguments != nullptr; ++arguments)
        words.emplace_back(*arguments);
    return words;
}

} // namespace

PrivilegedLauncher::PrivilegedLauncher(std::unique_ptr<const StartMethod> method)
    : m_method(std::move(method))
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
    Stream readEnd(nullptr, &std::fclose);
    const auto [status, reason] = start(m_method->commandFor(wordsOf(program, arguments)), readEnd);
    if (!reason.empty())
        AuthorizationFailure::tell(status, "start with administrator rights", reason);
    *output = status == AuthorizationStatus::success ? readEnd.release() : nullptr;
    return status;
}

AuthorizationOutcome PrivilegedLauncher::start(
    const std::vector<std::string>& command, Stream& output) const
{
    CallMarker marker("PrivilegedLauncher::start", this);
    Pipe programOutput;
    Pipe begun;
    int error = programOutput.open();
    if (error == 0)
        error = begun.open();
    if (error != 0)
        return failed("cannot make a pipe", error);
    output.reset(fdopen(programOutput.readEnd.get(), "r"));
    if (output == nullptr)
        return failed("cannot read a pipe", errno);
    programOutput.readEnd.release();

    // The action is the whole process's; a mask would leave the signal to the other threads.
    std::signal(SIGCHLD, SIG_DFL);
    pid_t process = 0;
    error = run(command, std::move(programOutput.writeEnd), std::move(begun.writeEnd), process);
    if (error != 0)
        return failed(command.front(), error);
    return m_method->await(process, command, begun.readEnd);
}

int PrivilegedLauncher::run(
    const std::vector<std::string>& command, FileDescriptor output, FileDescriptor begun,
    pid_t& process) const
{
    CallMarker marker("PrivilegedLauncher::run", this);
    ProgramStart programStart;
    programStart.useAsOutput(output.get());
    m_method->prepare(programStart, begun);
    return programStart.start(command, process);
}
