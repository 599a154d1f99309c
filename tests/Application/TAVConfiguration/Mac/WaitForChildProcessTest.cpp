#include "Pipe.h"
#include "PublishedTracer.h"
#include "SystemCallFaults.h"
#include "main.h"

#include <gtest/gtest.h>
#include <unistd.h>

namespace {

/// A child that prints the text and ends.
pid_t startChild(const std::string& text, std::FILE*& output)
{
    Pipe pipe;
    pipe.open();
    const pid_t child = fork();
    if (child == 0) {
        const auto written = write(pipe.writeEnd.get(), text.data(), text.size());
        _exit(written < 0 ? 1 : 0);
    }
    output = fdopen(pipe.readEnd.release(), "r");
    return child;
}

} // namespace

TEST(WaitForChildProcess, TracesEachLineAndReturnsTheChildsId)
{
    std::FILE* output = nullptr;
    const pid_t child = startChild("one 100%s\ntwo", output);
    const PublishedTracer tracer;

    const int pid = WaitForChildProcess(output, "the tool");

    EXPECT_EQ(pid, child);
    EXPECT_EQ(
        tracer.lines(), "[<id>][test           ]WaitForChildProcess\n"
                        "[<id>][test           ]  >> [D] Wait for process 'the tool'\n"
                        "[<id>][test           ]  >> [D] the tool >> one 100%s\n\n"
                        "[<id>][test           ]  >> [D] the tool >> two\n"
                        "[<id>][test           ]  >> [D] Process 'the tool' finished (pid = " +
                            std::to_string(child) + ").\n");
    EXPECT_EQ(std::fclose(output), 0) << "the pipe is still the caller's";
}

TEST(WaitForChildProcess, WaitsForAChildThatOutlastsItsOutput)
{
    Pipe life;
    life.open();
    std::FILE* const output = std::tmpfile();
    const pid_t child = fork();
    if (child == 0) {
        life.writeEnd = FileDescriptor(-1);
        char ignored = 0;
        _exit(static_cast<int>(read(life.readEnd.get(), &ignored, 1)));
    }
    SystemCallFaults calls;
    calls.interrupt("wait", "", [&life] { life.writeEnd = FileDescriptor(-1); });

    EXPECT_EQ(WaitForChildProcess(output, "tool"), child);

    std::fclose(output);
}

TEST(WaitForChildProcess, CutsALongLineIntoPiecesOfTheBuffer)
{
    const PublishedTracer tracer;
    std::FILE* output = nullptr;
    startChild(std::string(1023, 'a') + "b\n", output);

    WaitForChildProcess(output, "tool");

    const std::string message = "[<id>][test           ]  >> [D] tool >> ";
    EXPECT_NE(
        tracer.lines().find(message + std::string(1023, 'a') + "\n" + message + "b\n\n"),
        std::string::npos);
    std::fclose(output);
}

TEST(WaitForChildProcess, ReturnsTheFailureOfWaitingWithoutAChild)
{
    const PublishedTracer tracer;
    std::FILE* output = std::tmpfile();

    EXPECT_EQ(WaitForChildProcess(output, "tool"), -1);

    EXPECT_NE(tracer.lines().find("Process 'tool' finished (pid = -1).\n"), std::string::npos);
    std::fclose(output);
}
