#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <string>
#include <vector>

#include <fcntl.h>
#include <linux/close_range.h>
#include <unistd.h>

/// Stands in for pkexec: behaves towards its descriptors, its program and its exit status as pkexec
/// does, and keeps a record of what it was started with.
///
/// Environment: FAKE_ELEVATOR is "grant", "grant late", "refuse", "dismiss" or "crash"; "refuse
/// soon" and "refuse late" end some time after the descriptors are closed. FAKE_ELEVATOR_RECORD is
/// the file that gets its arguments, a line each, and then its environment. With
/// FAKE_ELEVATOR_HIDDEN its command line says nothing. FAKE_ELEVATOR_DAEMON is a FIFO: a process
/// that keeps the descriptors is left behind until nobody can write to it any more.
namespace {

std::string setting(const char* name)
{
    const char* value = std::getenv(name);
    return value != nullptr ? value : "";
}

void record(const std::vector<std::string>& words)
{
    std::ofstream out(setting("FAKE_ELEVATOR_RECORD"), std::ios::app);
    for (const std::string& word : words)
        out << word << '\n';
}

std::vector<std::string> wordsOf(char** list)
{
    std::vector<std::string> words;
    for (; *list != nullptr; ++list)
        words.emplace_back(*list);
    return words;
}

void blotOut(char** words)
{
    for (; *words != nullptr; ++words)
        std::memset(*words, 0, std::strlen(*words));
}

void leaveDaemonBehind(const std::string& fifo)
{
    const int life = open(fifo.c_str(), O_RDONLY);
    if (fork() != 0)
        return;
    close(STDOUT_FILENO);
    char ignored = 0;
    while (read(life, &ignored, 1) > 0) {
    }
    std::_Exit(0);
}

[[noreturn]] void become(std::vector<std::string> command)
{
    close_range(STDERR_FILENO + 1, ~0U, CLOSE_RANGE_CLOEXEC);
    std::vector<char*> words(command.size() + 1, nullptr);
    std::ranges::transform(command, words.begin(), [](std::string& word) { return word.data(); });
    execv(words.front(), words.data());
    std::_Exit(127);
}

[[noreturn]] void endAfter(useconds_t time)
{
    close_range(STDERR_FILENO + 1, ~0U, 0);
    usleep(time);
    std::_Exit(127);
}

} // namespace

int main(int /*argc*/, char** argv)
{
    constexpr useconds_t SOON = 20'000;
    constexpr useconds_t LATE = 1'500'000;
    const std::vector<std::string> words = wordsOf(argv);
    const std::string answer = setting("FAKE_ELEVATOR");
    if (!setting("FAKE_ELEVATOR_HIDDEN").empty())
        blotOut(argv);
    if (const std::string fifo = setting("FAKE_ELEVATOR_DAEMON"); !fifo.empty())
        leaveDaemonBehind(fifo);
    if (answer == "grant late")
        usleep(LATE);
    record(words);
    record(wordsOf(environ));
    if (answer.starts_with("grant"))
        become({words.begin() + 2, words.end()});
    if (answer == "refuse soon")
        endAfter(SOON);
    if (answer == "refuse late")
        endAfter(LATE);
    if (answer == "crash")
        raise(SIGKILL);
    return answer == "dismiss" ? 126 : 127;
}
