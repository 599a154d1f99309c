#pragma once

#include "AuthorizationServices.h"
#include "FileDescriptor.h"

#include <cstdio>
#include <string>
#include <vector>

#include <sys/types.h>

/// Starts a program in a session of its own, its output in a pipe, directly or through `pkexec`.
///
/// `pkexec` takes its parent as the one who asks and refuses a parent that is gone, so launch()
/// returns only once the program has begun or has failed to. From then on this process no longer
/// hears of children that end: the crash handler would take one for a crash.
class PrivilegedLauncher {
public:
    /// `elevator` is the path of `pkexec`; empty starts programs directly, with this process's
    /// rights and environment.
    explicit PrivilegedLauncher(std::string elevator);
    ~PrivilegedLauncher();

    PrivilegedLauncher(const PrivilegedLauncher&) = delete;
    PrivilegedLauncher& operator=(const PrivilegedLauncher&) = delete;

    /// `arguments` end with a null entry. On success `output` is the program's output, which the
    /// caller closes, else null. A failure is told on standard error, except that the user
    /// dismissed a prompt of the elevator's own.
    AuthorizationStatus launch(
        const std::string& program, const char* const* arguments, std::FILE** output) const;

private:
    bool hasBegun(
        pid_t process, const std::vector<std::string>& command, const FileDescriptor& begun) const;
    std::vector<std::string> commandFor(
        const std::string& program, const char* const* arguments) const;
    /// Closes this process's copies of both write ends. Returns 0, or the system's error.
    int start(
        std::vector<std::string> command, FileDescriptor output, FileDescriptor begun,
        pid_t& process) const;

    std::string m_elevator;
};
