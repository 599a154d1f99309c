#include <csignal>
#include <cstdlib>
#include <fstream>
#include <string>

#include <fcntl.h>
#include <unistd.h>

/// Stands in for pkexec: behaves towards its descriptors, its program and its exit status as pkexec
/// does, takes its time, and keeps a record of what it was started with.
///
/// Environment: FAKE_ELEVATOR is "grant", "refuse", "dismiss", "crash" or "refuse late", which
/// ends some time after its descriptors are closed; FAKE_ELEVATOR_RECORD is the file that gets its
/// arguments, a line each, and then its environment.
namespace {

void record(char** words)
{
    std::ofstream out(std::getenv("FAKE_ELEVATOR_RECORD"), std::ios::app);
    for (; *words != nullptr; ++words)
        out << *words << '\n';
}

[[noreturn]] void become(char** command)
{
    constexpr int HIGHEST_DESCRIPTOR = 1024;
    for (int descriptor = 3; descriptor < HIGHEST_DESCRIPTOR; ++descriptor)
        fcntl(descriptor, F_SETFD, FD_CLOEXEC);
    execv(command[0], command);
    std::_Exit(127);
}

} // namespace

int main(int /*argc*/, char** argv)
{
    constexpr int A_PASSWORD_TAKES = 200'000; // microseconds
    constexpr int AN_END_TAKES = 200'000;
    usleep(A_PASSWORD_TAKES);
    const char* given = std::getenv("FAKE_ELEVATOR");
    const std::string answer = given != nullptr ? given : "refuse";
    record(argv);
    record(environ);
    if (answer == "grant")
        become(argv + 2);
    if (answer == "refuse late") {
        close_range(STDERR_FILENO + 1, ~0U, 0);
        usleep(AN_END_TAKES);
    }
    if (answer == "crash")
        raise(SIGKILL);
    return answer == "dismiss" ? 126 : 127;
}
