#pragma once

#include "StartMethod.h"

/// Starts programs as root, through `pkexec`.
///
/// It takes its parent as the one who asks and refuses a parent that is gone, so await() returns
/// only once it has become the program, or has ended.
class PkexecStart : public StartMethod {
public:
    explicit PkexecStart(std::string path);
    ~PkexecStart() override;

    PkexecStart(const PkexecStart&) = delete;
    PkexecStart& operator=(const PkexecStart&) = delete;

    std::vector<std::string> commandFor(std::vector<std::string> program) const override;
    void prepare(ProgramStart& start, const FileDescriptor& begun) const override;
    /// That the user dismissed a prompt of pkexec's own is a failure without a reason.
    AuthorizationOutcome await(
        pid_t process, const std::vector<std::string>& command,
        const FileDescriptor& begun) const override;

private:
    std::string m_path;
};
