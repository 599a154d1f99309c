#pragma once

#include "AuthorizationOutcome.h"
#include "AuthorizationServices.h"
#include "FileDescriptor.h"
#include "StartMethod.h"

#include <cstdio>
#include <memory>
#include <string>
#include <vector>

#include <sys/types.h>

/// Starts a program in a session of its own, its output in a pipe.
///
/// launch() returns only once the program has begun or has failed to. From then on this process no
/// longer hears of children that end: the crash handler would take one for a crash.
class PrivilegedLauncher {
public:
    explicit PrivilegedLauncher(std::unique_ptr<const StartMethod> method);
    ~PrivilegedLauncher();

    PrivilegedLauncher(const PrivilegedLauncher&) = delete;
    PrivilegedLauncher& operator=(const PrivilegedLauncher&) = delete;

    /// `arguments` end with a null entry. On success `output` is the program's output, which the
    /// caller closes, else null. A failure is told on standard error, except that the user
    /// dismissed a prompt of the method's own.
    AuthorizationStatus launch(
        const std::string& program, const char* const* arguments, std::FILE** output) const;

private:
    using Stream = std::unique_ptr<std::FILE, int (*)(std::FILE*)>;

    AuthorizationOutcome start(const std::vector<std::string>& command, Stream& output) const;
    /// Closes this process's copies of both write ends. Returns 0, or the system's error.
    int run(
        const std::vector<std::string>& command, FileDescriptor output, FileDescriptor begun,
        pid_t& process) const;

    std::unique_ptr<const StartMethod> m_method;
};
