#pragma once

#include "StartMethod.h"

/// Starts programs with this process's rights and environment.
class DirectStart : public StartMethod {
public:
    std::vector<std::string> commandFor(std::vector<std::string> program) const override;
    void prepare(ProgramStart& start, const FileDescriptor& begun) const override;
    /// The program has begun once its start has succeeded, however it ends.
    AuthorizationOutcome await(
        pid_t process, const std::vector<std::string>& command,
        const FileDescriptor& begun) const override;
};
