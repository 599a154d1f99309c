#include "PrivilegedLauncher.h"

#include "DirectStart.h"
#include "PkexecStart.h"
#include "ScopedEnvironment.h"
#include "SystemCallFaults.h"
#include "TemporaryFolder.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <filesystem>
#include <memory>
#include <optional>

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <linux/close_range.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

using testing::HasSubstr;
using testing::internal::CaptureStderr;
using testing::internal::GetCapturedStderr;

namespace {

volatile std::sig_atomic_t s_childrenHeardOf = 0;

void countChild(int /*signal*/)
{
    s_childrenHeardOf = s_childrenHeardOf + 1;
}

/// Everything up to the end of the output; closes it.
std::string readAll(std::FILE* output)
{
    if (output == nullptr) {
        ADD_FAILURE() << "there is no output";
        return "";
    }
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> owner(output, &std::fclose);
    std::string text;
    std::array<char, 256> part{};
    while (std::fgets(part.data(), part.size(), output) != nullptr)
        text += part.data();
    return text;
}

/// The standard input of this process, for the time of a scope.
class InputFrom {
public:
    explicit InputFrom(const std::string& file) : m_former(dup(STDIN_FILENO))
    {
        const FileDescriptor input(open(file.c_str(), O_RDONLY | O_CLOEXEC));
        dup2(input.get(), STDIN_FILENO);
    }
    ~InputFrom() { dup2(m_former.get(), STDIN_FILENO); }

    InputFrom(const InputFrom&) = delete;
    InputFrom& operator=(const InputFrom&) = delete;

private:
    const FileDescriptor m_former;
};

} // namespace

/// Launches through the fake elevator, which grants unless the test says otherwise.
class PrivilegedLauncherTest : public testing::Test {
protected:
    PrivilegedLauncherTest()
    {
        s_childrenHeardOf = 0;
        std::signal(SIGCHLD, countChild);
    }
    ~PrivilegedLauncherTest() override
    {
        while (waitpid(-1, nullptr, 0) > 0) {
        }
        std::signal(SIGCHLD, SIG_DFL);
    }

    AuthorizationStatus launch(
        const std::string& program, const std::vector<const char*>& arguments = {})
    {
        std::vector<const char*> list = arguments;
        list.push_back(nullptr);
        CaptureStderr();
        const AuthorizationStatus status = launcher->launch(program, list.data(), &output);
        errors = GetCapturedStderr();
        return status;
    }
    void answer(const char* answer) { setenv("FAKE_ELEVATOR", answer, 1); }

    TemporaryFolder folder;
    ScopedEnvironment answerVariable{"FAKE_ELEVATOR", "grant"};
    ScopedEnvironment recordVariable{"FAKE_ELEVATOR_RECORD", folder.file("record")};
    std::optional<PrivilegedLauncher> launcher{std::make_unique<PkexecStart>(TAV_FAKE_ELEVATOR)};
    std::FILE* output = stdin; // which no launch must leave there
    std::string errors;
};

TEST_F(PrivilegedLauncherTest, HandsProgramAndArgumentsToTheElevator)
{
    EXPECT_EQ(launch("/bin/echo", {"--adminRights"}), AuthorizationStatus::success);

    EXPECT_EQ(readAll(output), "--adminRights\n");
    EXPECT_THAT(
        folder.read("record"),
        testing::StartsWith(TAV_FAKE_ELEVATOR
                            "\n--disable-internal-agent\n/bin/echo\n--adminRights\n"));
    EXPECT_EQ(errors, "");
}

TEST_F(PrivilegedLauncherTest, GivesBackTheOutputOfAProgramThatRuns)
{
    const std::string fifo = folder.file("fifo");
    mkfifo(fifo.c_str(), 0600);

    EXPECT_EQ(launch("/bin/cat", {fifo.c_str()}), AuthorizationStatus::success);

    EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), 0) << "the program still runs";
    folder.write("fifo", "alive");
    EXPECT_EQ(readAll(output), "alive");
}

TEST_F(PrivilegedLauncherTest, ReturnsOnlyOnceTheElevatorHasDoneItsWork)
{
    answer("grant late");

    launch("/bin/echo");

    EXPECT_NE(folder.read("record"), "");
    readAll(output);
}

TEST_F(PrivilegedLauncherTest, WaitsForTheElevatorAlsoWhereTheSystemHidesIt)
{
    const ScopedEnvironment hidden("FAKE_ELEVATOR_HIDDEN", "yes");
    answer("grant late");

    launch("/bin/echo");

    EXPECT_NE(folder.read("record"), "");
    readAll(output);
}

TEST_F(PrivilegedLauncherTest, TakesAProgramThatEndsWithAStatusOfItsOwnAsBegun)
{
    EXPECT_EQ(launch("/bin/false"), AuthorizationStatus::success);

    EXPECT_EQ(readAll(output), "");
    EXPECT_EQ(errors, "");
}

TEST_F(PrivilegedLauncherTest, RunsAProgramWhosePathHoldsBlanks)
{
    const std::string program = folder.file("a program");
    std::filesystem::copy_file("/bin/echo", program);

    EXPECT_EQ(launch(program, {"two words"}), AuthorizationStatus::success);

    EXPECT_EQ(readAll(output), "two words\n");
}

TEST_F(PrivilegedLauncherTest, ExplainsARefusal)
{
    answer("refuse");

    EXPECT_EQ(launch("/bin/echo"), AuthorizationStatus::toolExecuteFailure);

    EXPECT_EQ(output, nullptr);
    EXPECT_EQ(errors, "TavConfiguration: cannot start with administrator rights: pkexec refused\n");
}

TEST_F(PrivilegedLauncherTest, ExplainsARefusalOfAnElevatorThatTakesItsTimeToEnd)
{
    answer("refuse late");

    EXPECT_EQ(launch("/bin/echo"), AuthorizationStatus::toolExecuteFailure);

    EXPECT_EQ(output, nullptr);
    EXPECT_EQ(errors, "TavConfiguration: cannot start with administrator rights: pkexec refused\n");
}

TEST_F(PrivilegedLauncherTest, ExplainsARefusalAlsoWhereTheSystemHidesTheElevator)
{
    const ScopedEnvironment hidden("FAKE_ELEVATOR_HIDDEN", "yes");
    answer("refuse soon");

    EXPECT_EQ(launch("/bin/echo"), AuthorizationStatus::toolExecuteFailure);

    EXPECT_EQ(output, nullptr);
    EXPECT_EQ(errors, "TavConfiguration: cannot start with administrator rights: pkexec refused\n");
}

TEST_F(PrivilegedLauncherTest, IsSilentAboutADismissedPrompt)
{
    answer("dismiss");

    EXPECT_EQ(launch("/bin/echo"), AuthorizationStatus::canceled);

    EXPECT_EQ(output, nullptr);
    EXPECT_EQ(errors, "");
}

TEST_F(PrivilegedLauncherTest, ExplainsAnElevatorThatIsKilled)
{
    answer("crash");

    EXPECT_EQ(launch("/bin/echo"), AuthorizationStatus::toolExecuteFailure);

    EXPECT_EQ(output, nullptr);
    EXPECT_EQ(
        errors,
        "TavConfiguration: cannot start with administrator rights: pkexec was ended by signal 9\n");
}

TEST_F(PrivilegedLauncherTest, ExplainsAProgramThatTheElevatorCannotStart)
{
    EXPECT_EQ(launch(folder.file("missing")), AuthorizationStatus::toolExecuteFailure);

    EXPECT_EQ(output, nullptr);
    EXPECT_THAT(errors, HasSubstr("pkexec refused"));
}

TEST_F(PrivilegedLauncherTest, ExplainsAMissingElevator)
{
    launcher.emplace(std::make_unique<PkexecStart>("/missing/pkexec"));

    EXPECT_EQ(launch("/bin/echo"), AuthorizationStatus::toolExecuteFailure);

    EXPECT_EQ(
        errors, "TavConfiguration: cannot start with administrator rights: /missing/pkexec: No "
                "such file or directory\n");
}

TEST_F(PrivilegedLauncherTest, StartsDirectlyWithoutAnElevator)
{
    launcher.emplace(std::make_unique<DirectStart>());

    EXPECT_EQ(launch("/bin/echo", {"a", "b"}), AuthorizationStatus::success);

    EXPECT_EQ(readAll(output), "a b\n");
    EXPECT_EQ(folder.read("record"), "");
}

TEST_F(PrivilegedLauncherTest, TakesAProgramStartedDirectlyAsBegunHoweverItEnds)
{
    launcher.emplace(std::make_unique<DirectStart>());

    for (const char* const end : {"exit 126", "exit 127", "kill -9 $$"}) {
        EXPECT_EQ(launch("/bin/sh", {"-c", end}), AuthorizationStatus::success) << end;
        EXPECT_EQ(readAll(output), "");
        EXPECT_EQ(errors, "");
    }
}

TEST_F(PrivilegedLauncherTest, ExplainsAProgramThatCannotBeStartedDirectly)
{
    launcher.emplace(std::make_unique<DirectStart>());

    EXPECT_EQ(launch("/missing/tool"), AuthorizationStatus::toolExecuteFailure);

    EXPECT_EQ(
        errors, "TavConfiguration: cannot start with administrator rights: /missing/tool: No such "
                "file or directory\n");
}

TEST_F(PrivilegedLauncherTest, LeavesTheShellOutOfTheElevatorsEnvironment)
{
    const ScopedEnvironment shell("SHELL", "/opt/an/unlisted/shell");
    const ScopedEnvironment shellLevel("SHELL_LEVEL", "kept");

    launch("/bin/echo");

    EXPECT_THAT(folder.read("record"), HasSubstr("\nSHELL_LEVEL=kept\n"));
    EXPECT_THAT(folder.read("record"), Not(HasSubstr("\nSHELL=")));
    readAll(output);
}

TEST_F(PrivilegedLauncherTest, LeavesOutWhatTheElevatorWouldRefuse)
{
    const ScopedEnvironment locale("LC_TIME", "../../a/locale");
    const ScopedEnvironment language("LANGUAGE", "fr");

    launch("/bin/echo");

    EXPECT_THAT(folder.read("record"), HasSubstr("\nLANGUAGE=fr\n"));
    EXPECT_THAT(folder.read("record"), Not(HasSubstr("\nLC_TIME=")));
    readAll(output);
}

TEST_F(PrivilegedLauncherTest, GivesTheProgramASessionOfItsOwn)
{
    launch("/usr/bin/cut", {"-d ", "-f6", "/proc/self/stat"});

    EXPECT_NE(std::stoi(readAll(output)), getsid(0));
}

TEST_F(PrivilegedLauncherTest, GivesTheProgramAnEmptyInput)
{
    const InputFrom text(folder.write("input", "text"));

    launch("/bin/cat");

    EXPECT_EQ(readAll(output), "");
}

TEST_F(PrivilegedLauncherTest, LetsNoOtherDescriptorThrough)
{
    launch("/bin/ls", {"/proc/self/fd"});

    EXPECT_EQ(readAll(output), "0\n1\n2\n3\n") << "3 is the folder that is listed";
}

TEST_F(PrivilegedLauncherTest, LetsNoOtherDescriptorThroughToAProgramStartedDirectly)
{
    launcher.emplace(std::make_unique<DirectStart>());
    const std::array<const char*, 2> arguments{"/proc/self/fd", nullptr};
    // Those of whoever started the test are none of the launcher's.
    close_range(STDERR_FILENO + 1, ~0U, CLOSE_RANGE_CLOEXEC);

    launcher->launch("/bin/ls", arguments.data(), &output);

    EXPECT_EQ(readAll(output), "0\n1\n2\n3\n") << "3 is the folder that is listed";
}

TEST_F(PrivilegedLauncherTest, HearsOfNoChildThatEnds)
{
    launch("/bin/echo");
    readAll(output);
    waitpid(-1, nullptr, 0);

    EXPECT_EQ(s_childrenHeardOf, 0);
}

TEST_F(PrivilegedLauncherTest, ExplainsThatItCannotMakeAPipe)
{
    for (const int nth : {1, 2}) {
        SystemCallFaults faults;
        faults.fail("pipe2", EMFILE, nth);

        EXPECT_EQ(launch("/bin/echo"), AuthorizationStatus::toolExecuteFailure) << nth;

        EXPECT_EQ(output, nullptr);
        EXPECT_EQ(
            errors, "TavConfiguration: cannot start with administrator rights: cannot make a pipe: "
                    "Too many open files\n");
        EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1) << "nothing is started";
    }
}

TEST_F(PrivilegedLauncherTest, ExplainsWhyTheFirstPipeFailedWhereTheSecondFailsToo)
{
    SystemCallFaults faults;
    faults.fail("pipe2", EMFILE, 1);
    faults.fail("pipe2", ENFILE, 2);

    EXPECT_EQ(launch("/bin/echo"), AuthorizationStatus::toolExecuteFailure);

    EXPECT_EQ(
        errors, "TavConfiguration: cannot start with administrator rights: cannot make a pipe: "
                "Too many open files\n");
}

TEST_F(PrivilegedLauncherTest, ExplainsThatItCannotReadThePipe)
{
    SystemCallFaults faults;
    faults.fail("fdopen", ENOMEM);

    EXPECT_EQ(launch("/bin/echo"), AuthorizationStatus::toolExecuteFailure);

    EXPECT_EQ(output, nullptr);
    EXPECT_EQ(
        errors, "TavConfiguration: cannot start with administrator rights: cannot read a pipe: "
                "Cannot allocate memory\n");
    EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1) << "nothing is started";
}

TEST_F(PrivilegedLauncherTest, ExplainsThatItCannotWaitForTheElevator)
{
    answer("refuse");
    SystemCallFaults faults;
    faults.fail("waitpid", ECHILD);

    EXPECT_EQ(launch("/bin/echo"), AuthorizationStatus::toolExecuteFailure);

    EXPECT_EQ(output, nullptr);
    EXPECT_EQ(
        errors, "TavConfiguration: cannot start with administrator rights: cannot wait for "
                "pkexec: No child processes\n");
}

TEST_F(PrivilegedLauncherTest, WaitsAgainWhenASignalInterruptsTheWait)
{
    answer("refuse");
    SystemCallFaults faults;
    faults.fail("waitpid", EINTR);

    EXPECT_EQ(launch("/bin/echo"), AuthorizationStatus::toolExecuteFailure);

    EXPECT_EQ(errors, "TavConfiguration: cannot start with administrator rights: pkexec refused\n");
}

/// The elevator leaves a process behind that keeps its descriptors for as long as the test lasts.
class PrivilegedLauncherDaemonTest : public PrivilegedLauncherTest {
protected:
    std::string makeFifo(const std::string& name) const
    {
        mkfifo(folder.file(name).c_str(), 0600);
        return folder.file(name);
    }

    const std::string life = makeFifo("life");
    const FileDescriptor lifeEnd{open(life.c_str(), O_RDWR | O_CLOEXEC)};
    const ScopedEnvironment daemon{"FAKE_ELEVATOR_DAEMON", life};
};

TEST_F(PrivilegedLauncherDaemonTest, ReturnsOnceTheProgramHasBegun)
{
    const std::string fifo = makeFifo("fifo");

    EXPECT_EQ(launch("/bin/cat", {fifo.c_str()}), AuthorizationStatus::success);

    EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), 0) << "the program still runs";
    folder.write("fifo", "alive");
    EXPECT_EQ(readAll(output), "alive");
}

TEST_F(PrivilegedLauncherDaemonTest, ReturnsOnceTheElevatorHasRefused)
{
    answer("refuse");

    EXPECT_EQ(launch("/bin/echo"), AuthorizationStatus::toolExecuteFailure);

    EXPECT_EQ(errors, "TavConfiguration: cannot start with administrator rights: pkexec refused\n");
}

class PrivilegedLauncherFailureTest : public PrivilegedLauncherTest,
                                      public testing::WithParamInterface<const char*> {};

TEST_P(PrivilegedLauncherFailureTest, LeavesNoChildBehind)
{
    answer(GetParam());

    launch("/bin/echo");

    EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1);
    EXPECT_EQ(s_childrenHeardOf, 0);
}

INSTANTIATE_TEST_SUITE_P(
    Answers, PrivilegedLauncherFailureTest,
    testing::Values("refuse", "refuse late", "dismiss", "crash"));
