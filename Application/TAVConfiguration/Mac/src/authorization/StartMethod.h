#pragma once

#include "AuthorizationOutcome.h"
#include "FileDescriptor.h"

#include <string>
#include <vector>

#include <sys/types.h>

class ProgramStart;

/// How a program is started: what its command is, and when it has begun.
class StartMethod {
public:
    virtual ~StartMethod() = default;

    /// The words that are started for those of the program.
    virtual std::vector<std::string> commandFor(std::vector<std::string> program) const = 0;
    /// `begun` is the write end of a pipe that stays open until the program has begun.
    virtual void prepare(ProgramStart& start, const FileDescriptor& begun) const = 0;
    /// Waits until the program has begun, or has failed to; `begun` is the pipe's read end.
    virtual AuthorizationOutcome await(
        pid_t process, const std::vector<std::string>& command,
        const FileDescriptor& begun) const = 0;
};
