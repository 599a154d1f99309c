#include "ProgramStart.h"

#include "CallMarker.h"

#include <algorithm>
#include <string_view>

#include <fcntl.h>
#include <unistd.h>

ProgramStart::ProgramStart()
{
    CallMarker marker("ProgramStart", "ProgramStart::constructor", true, this);
    posix_spawn_file_actions_init(&m_actions);
    posix_spawn_file_actions_addopen(&m_actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawnattr_init(&m_attributes);
    posix_spawnattr_setflags(&m_attributes, POSIX_SPAWN_SETSID);
}

ProgramStart::~ProgramStart()
{
    CallMarker marker("ProgramStart", "ProgramStart::destructor", false, this);
    posix_spawnattr_destroy(&m_attributes);
    posix_spawn_file_actions_destroy(&m_actions);
}

void ProgramStart::useAsOutput(int descriptor)
{
    CallMarker marker("ProgramStart::useAsOutput", this);
    posix_spawn_file_actions_adddup2(&m_actions, descriptor, STDOUT_FILENO);
}

void ProgramStart::keepOpen(int descriptor)
{
    CallMarker marker("ProgramStart::keepOpen", this);
    // Duplicating a descriptor onto itself takes its close-on-exec mark away.
    posix_spawn_file_actions_adddup2(&m_actions, descriptor, descriptor);
}

void ProgramStart::leaveOutOfEnvironment(const std::string& name)
{
    CallMarker marker("ProgramStart::leaveOutOfEnvironment", this);
    m_leftOut.push_back(name + "=");
}

int ProgramStart::start(std::vector<std::string> command, pid_t& process) const
{
    CallMarker marker("ProgramStart::start", this);
    std::vector<char*> words(command.size() + 1, nullptr);
    std::ranges::transform(command, words.begin(), [](std::string& word) { return word.data(); });

    std::vector<char*> environment;
    for (char** entry = environ; *entry != nullptr; ++entry)
        if (std::ranges::none_of(m_leftOut, [entry](const std::string& name) {
                return std::string_view(*entry).starts_with(name);
            }))
            environment.push_back(*entry);
    environment.push_back(nullptr);

    return posix_spawn(
        &process, words.front(), &m_actions, &m_attributes, words.data(), environment.data());
}
