#pragma once

#include <string>
#include <vector>

#include <spawn.h>

/// Starts one program: in a session of its own, so that neither the terminal's keys nor its end
/// reach it, with an empty standard input and this process's standard error.
class ProgramStart {
public:
    ProgramStart();
    ~ProgramStart();

    ProgramStart(const ProgramStart&) = delete;
    ProgramStart& operator=(const ProgramStart&) = delete;

    void useAsOutput(int descriptor);
    /// The program inherits the descriptor under the same number.
    void keepOpen(int descriptor);
    void leaveOutOfEnvironment(const std::string& name);

    /// The first entry is the program's path. Returns 0, or the system's error.
    int start(std::vector<std::string> command, pid_t& process) const;

private:
    posix_spawn_file_actions_t m_actions{};
    posix_spawnattr_t m_attributes{};
    std::vector<std::string> m_leftOut;
};
