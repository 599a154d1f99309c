#include "KFExceptionHandler.h"

#include "BlockedViolations.h"
#include "CallMarker.h"
#include "Contract.h"
#include "CrashReport.h"
#include "JoinedOutputs.h"
#include "KFThread.h"
#include "KeptViolation.h"
#include "PublishedTracer.h"
#include "VirtualSlot.h"

#include <csignal>
#include <cstdlib>
#include <latch>
#include <map>
#include <ostream>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>
#include <sys/mman.h>
#include <sys/resource.h>
#include <unistd.h>

namespace {

KFExceptionHandler* handler()
{
    return KFExceptionHandler::GetInstance();
}

struct Raised {
    int host;
    std::string message;

    friend void PrintTo(const Raised& row, std::ostream* out) { *out << row.host; }
};

struct Filtered {
    int signal;
    std::string message;

    friend void PrintTo(const Filtered& row, std::ostream* out) { *out << row.signal; }
};

class EverySignal : public testing::TestWithParam<Raised> {};
class EverySignalNumber : public testing::TestWithParam<Filtered> {};
class UntouchedSignal : public testing::TestWithParam<int> {};

struct sigaction installed(int host)
{
    struct sigaction action {};
    sigaction(host, nullptr, &action);
    return action;
}

/// Two violations whose one signal is delivered behind both.
void violateTwiceAtOnce()
{
    const BlockedViolations blocked;
    handler()->throwException(0, "FIRST", "first", "First", 1);
    handler()->throwException(0, "SECOND", "second", "Second", 2);
}

void writeWhereNothingMayBeWritten()
{
    void* const page = mmap(nullptr, 4096, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    *static_cast<volatile char*>(page) = 'x';
}

void writeToAPipeWithoutReader()
{
    int ends[2] = {};
    ASSERT_EQ(pipe(ends), 0);
    close(ends[0]);
    EXPECT_EQ(write(ends[1], "x", 1), -1);
}

void endAChild()
{
    if (fork() == 0)
        _exit(0);
    pause();
}

/// Without a limit the overflow might find room.
void limitTheStack()
{
    constexpr rlim_t size = 8U << 20U;
    const rlimit limit{size, size};
    setrlimit(RLIMIT_STACK, &limit);
}

int overflowTheStack(int depth)
{
    volatile char block[65536];
    block[0] = static_cast<char>(depth);
    return depth == 0 ? block[0] : overflowTheStack(depth - 1) + block[0];
}

/// Runs its function on a thread that traces know as "worker".
class Worker : public KFThread {
public:
    explicit Worker(void (*body)()) : KFThread("worker"), m_body(body) {}
    void run() override { m_body(); }

private:
    void (*m_body)();
};

// The three checks that tell no other line stand behind this one.
constexpr int c_lineBefore = __LINE__;
const auto requireBelow = [] { Contract::require(false, "x", "A/B"); };
const auto ensureBelow = [] { Contract::ensure(false, "x", "A/B"); };
const auto assertBelow = [] { Contract::assertThat(false, "x", "A/B"); };

void violateInWorker()
{
    Worker worker([] {
        const CallMarker marker("working");
        Contract::require(false, "x != NULL", "F", 12);
    });
    worker.start();
    worker.stop();
}

} // namespace

TEST(KFExceptionHandler, IsOneInstance)
{
    EXPECT_EXIT(
        {
            if (handler() != nullptr && handler() == handler())
                _exit(7);
        },
        testing::ExitedWithCode(7), "");
}

TEST(KFExceptionHandlerListener, IsToldInTheSlotBehindTheDestructors)
{
    EXPECT_EQ(virtualSlot(&KFExceptionListener::onReport), 2);
}

TEST_P(EverySignal, IsReportedAndEndsTheProcessWithStatusZero)
{
    EXPECT_CRASH_REPORT(raise(GetParam().host), GetParam().message);
}

INSTANTIATE_TEST_SUITE_P(
    OneToThirty, EverySignal,
    testing::Values(
        Raised{SIGHUP, "SIGNAL_HANG_UP"}, Raised{SIGINT, "SIGNAL_INTERRUPT"},
        Raised{SIGQUIT, "SIGNAL_QUIT"}, Raised{SIGILL, "SIGNAL_ILLEGAL_INSTRUCTION"},
        Raised{SIGTRAP, "SIGNAL_TRACE_TRAP"}, Raised{SIGABRT, "SIGNAL_ABORT"},
        Raised{SIGSTKFLT, "UNKNOWN SIGNAL (7)"}, Raised{SIGFPE, "SIGNAL_FLT"},
        Raised{SIGBUS, "SIGNAL_BUS_ERROR"}, Raised{SIGSEGV, "SIGNAL_SEGMENTATION_FAULT"},
        Raised{SIGSYS, "SIGNAL_BAD_ARGUMENT_SYSTEM_CALL"},
        Raised{SIGPIPE, "SIGNAL_WRITE_PIPE_WITH_NO_READER"}, Raised{SIGALRM, "SIGNAL_ALARM_CLOCK"},
        Raised{SIGTERM, "SIGNAL_SOTWARE_TERMINATION"}, Raised{SIGURG, "SIGNAL_URG_ON_IO_CHANNEL"},
        Raised{SIGTSTP, "UNKNOWN SIGNAL (18)"}, Raised{SIGCONT, "SIGNAL_CONTINUE"},
        Raised{SIGCHLD, "SIGNAL_SIGCHLD"}, Raised{SIGTTIN, "SIGNAL_SIGTTIN"},
        Raised{SIGTTOU, "SIGNAL_SIGTTOU"}, Raised{SIGIO, "UNKNOWN SIGNAL (23)"},
        Raised{SIGXCPU, "UNKNOWN SIGNAL (24)"}, Raised{SIGXFSZ, "UNKNOWN SIGNAL (25)"},
        Raised{SIGVTALRM, "UNKNOWN SIGNAL (26)"}, Raised{SIGPROF, "UNKNOWN SIGNAL (27)"},
        Raised{SIGPWR, "UNKNOWN SIGNAL (29)"}, Raised{SIGUSR1, " :  - In File :  - At Line : "}));

TEST_P(EverySignalNumber, IsReportedByTheFilter)
{
    EXPECT_CRASH_REPORT(
        KFExceptionHandler::crashHandlerSignalFilter(GetParam().signal), GetParam().message);
}

INSTANTIATE_TEST_SUITE_P(
    NotRaised, EverySignalNumber,
    testing::Values(
        Filtered{9, "SIGNAL_KILL"}, Filtered{17, "SIGNAL_STOP"},
        Filtered{28, "SIGNAL_WINDOW_SIZE_CHANGE"}, Filtered{10, "SIGNAL_BUS_ERROR"},
        Filtered{0, "UNKNOWN SIGNAL (0)"}, Filtered{31, "UNKNOWN SIGNAL (31)"},
        Filtered{30, " :  - In File :  - At Line : "}));

TEST(KFExceptionHandler, FilterEndsTheProcessAlsoBeforeThereIsAHandler)
{
    EXPECT_EXIT(
        KFExceptionHandler::crashHandlerSignalFilter(15), testing::ExitedWithCode(0),
        testing::Eq(""));
}

TEST_P(UntouchedSignal, KeepsItsDefaultAction)
{
    EXPECT_EXIT(
        {
            handler();
            _exit(installed(GetParam()).sa_handler == SIG_DFL ? 7 : 8);
        },
        testing::ExitedWithCode(7), "");
}

INSTANTIATE_TEST_SUITE_P(
    KillStopAndWindowSizeChange, UntouchedSignal,
    testing::Values(SIGKILL, SIGSTOP, SIGWINCH, SIGUSR2));

TEST(KFExceptionHandler, InstallsItsRecordWithAnEmptyMaskAndNoFlags)
{
    constexpr int restorer = 0x04000000; // set by the C library itself
    EXPECT_EXIT(
        {
            handler();
            const struct sigaction action = installed(SIGTERM);
            sigset_t none{};
            sigemptyset(&none);
            const bool emptyMask = sigisemptyset(&action.sa_mask) != 0;
            _exit(emptyMask && (action.sa_flags & ~restorer) == 0 ? 7 : 8);
        },
        testing::ExitedWithCode(7), "");
}

TEST(KFExceptionHandler, ReportsWhatTheHardwareAndTheSystemRaise)
{
    EXPECT_CRASH_REPORT(writeWhereNothingMayBeWritten(), "SIGNAL_SEGMENTATION_FAULT");
    EXPECT_CRASH_REPORT(writeToAPipeWithoutReader(), "SIGNAL_WRITE_PIPE_WITH_NO_READER");
    EXPECT_CRASH_REPORT(endAChild(), "SIGNAL_SIGCHLD");
    EXPECT_CRASH_REPORT(std::abort(), "SIGNAL_ABORT");
}

TEST(KFExceptionHandler, CannotReportAStackThatHasOverflowed)
{
    EXPECT_EXIT(
        {
            limitTheStack();
            handler();
            overflowTheStack(1000000);
        },
        testing::KilledBySignal(SIGSEGV), "");
}

TEST(KFExceptionHandler, ReportsAViolationWithItsTextUnitAndLine)
{
    EXPECT_CRASH_REPORT(
        handler()->throwException(0, "REQUIRE VIOLATION", "x != NULL", "F", 12),
        "REQUIRE VIOLATION : x != NULL - In File : F - At Line : 12");
}

TEST(KFExceptionHandler, ReportsThePercentSignsOfAViolationAsText)
{
    EXPECT_CRASH_REPORT(
        handler()->throwException(0, "%s", "a % b == 0 %n", "%d", -1),
        "%s : a % b == 0 %n - In File : %d - At Line : -1");
}

TEST(KFExceptionHandler, RaisesTheSignalOfTheCode)
{
    EXPECT_CRASH_REPORT(
        handler()->throwException(11, "NAME", "text", "F", 12), "SIGNAL_SEGMENTATION_FAULT");
    EXPECT_CRASH_REPORT(handler()->throwException(10, "NAME", "text", "F", 12), "SIGNAL_BUS_ERROR");
    EXPECT_CRASH_REPORT(
        handler()->throwException(30, "NAME", "text", "F", 12),
        "NAME : text - In File : F - At Line : 12");
}

TEST(KFExceptionHandler, ReturnsWhenTheSignalDoesNotEndTheProcess)
{
    EXPECT_EXIT(
        {
            handler()->throwException(28, "NAME", "text", "F", 12);
            handler()->throwException(31, "NAME", "text", "F", 12);
            handler()->throwException(-1, "NAME", "text", "F", 12);
            _exit(7);
        },
        testing::ExitedWithCode(7), "");
}

TEST(KFExceptionHandler, KeepsTheLastViolationOnly)
{
    EXPECT_CRASH_REPORT(violateTwiceAtOnce(), "SECOND : second - In File : Second - At Line : 2");
}

TEST(KFExceptionHandler, KeepsFiveEmptyParametersBeforeAnyViolation)
{
    const KeptViolation::Parameters empty{
        {"Code", ""}, {"Name", ""}, {"Description", ""}, {"InFile", ""}, {"AtLine", ""}};

    EXPECT_EXIT(
        {
            handler();
            _exit(KeptViolation::parameters() == empty ? 7 : 8);
        },
        testing::ExitedWithCode(7), "");
}

TEST(KFExceptionHandler, KeepsTheCodeOfAViolationToo)
{
    const KeptViolation::Parameters kept{
        {"Code", "28"},
        {"Name", "NAME"},
        {"Description", "text"},
        {"InFile", "F"},
        {"AtLine", "12"}};

    EXPECT_EXIT(
        {
            handler()->throwException(28, "NAME", "text", "F", 12);
            _exit(KeptViolation::parameters() == kept ? 7 : 8);
        },
        testing::ExitedWithCode(7), "");
}

TEST(KFExceptionHandler, CutsTheMessageAt1023Characters)
{
    const std::string text(2000, 'x');
    EXPECT_CRASH_REPORT(
        handler()->throwException(0, "NAME", text.c_str(), "F", 12),
        "NAME : " + std::string(1023 - 7, 'x'));
}

TEST(KFExceptionHandler, WritesNothingWithoutTracerAndListener)
{
    EXPECT_EXIT(
        {
            joinOutputs();
            handler()->throwException(0, "REQUIRE VIOLATION", "x != NULL", "F", 12);
        },
        testing::ExitedWithCode(0), testing::Eq(""));
}

TEST(KFExceptionHandler, TracesItsConstructorTheReportTheStacksAndTheObjects)
{
    PublishedTracer tracer;

    EXPECT_EXIT(
        {
            tracer->BeginningOfThread("child");
            handler();
            const CallMarker marker("f");
            handler()->throwException(0, "REQUIRE VIOLATION", "x != NULL", "F", 12);
        },
        testing::ExitedWithCode(0), "");

    EXPECT_EQ(
        tracer.linesOfAllThreads(),
        "[<id>][child          ]KFExceptionHandler::constructor\n"
        "[<id>][child          ]  >> [E] Cant install signal handler for 9 errno = 22.\n"
        "[<id>][child          ]  >> [E] Cant install signal handler for 17 errno = 22.\n"
        "[<id>][child          ]f\n"
        "[<id>][child          ]  SIGNAL_FILTER\n"
        "[<id>][child          ]    >> [E] REQUIRE VIOLATION : x != NULL - In File : F - "
        "At Line : 12\n"
        "\n-------------- CALLSTACK --------------\n"
        "[<id>][child          ]    [2] SIGNAL_FILTER\n"
        "[<id>][child          ]    [1] f\n"
        "---------------------------------------\n"
        "\n-------------- OBJECT(S) COUNT --------------\n"
        "Class = KFExceptionHandler            , count = 000001\n"
        "---------------------------------------------\n");
}

TEST(KFExceptionHandler, TracesNoMessageWhenErrorTracesAreOff)
{
    PublishedTracer tracer;
    tracer->setMsgTypeMask(0x1FF & ~2U);

    EXPECT_EXIT(
        {
            tracer->BeginningOfThread("child");
            handler()->throwException(15, "", "", "", 0);
        },
        testing::ExitedWithCode(0), "");

    EXPECT_EQ(
        tracer.linesOfAllThreads(), "[<id>][child          ]KFExceptionHandler::constructor\n"
                                    "[<id>][child          ]SIGNAL_FILTER\n"
                                    "\n-------------- CALLSTACK --------------\n"
                                    "[<id>][child          ]    [1] SIGNAL_FILTER\n"
                                    "---------------------------------------\n"
                                    "\n-------------- OBJECT(S) COUNT --------------\n"
                                    "Class = KFExceptionHandler            , count = 000001\n"
                                    "---------------------------------------------\n");
}

TEST(KFExceptionHandler, TracesNoMessageInACallThatTheFiltersHide)
{
    PublishedTracer tracer;
    tracer->TraceTheCall("-SIGNAL_FILTER");

    EXPECT_EXIT(
        {
            tracer->BeginningOfThread("child");
            handler()->throwException(0, "NAME", "text", "F", 12);
        },
        testing::ExitedWithCode(0), "");

    EXPECT_EQ(
        tracer.linesOfAllThreads(),
        "[<id>][child          ]KFExceptionHandler::constructor\n"
        "[<id>][child          ]  >> [E] Cant install signal handler for 9 errno = 22.\n"
        "[<id>][child          ]  >> [E] Cant install signal handler for 17 errno = 22.\n"
        "\n-------------- CALLSTACK --------------\n"
        "[<id>][child          ]    [1] SIGNAL_FILTER\n"
        "---------------------------------------\n"
        "\n-------------- OBJECT(S) COUNT --------------\n"
        "Class = KFExceptionHandler            , count = 000001\n"
        "---------------------------------------------\n");
}

TEST(KFExceptionHandler, TracesNothingWhileTracingIsOff)
{
    PublishedTracer tracer;
    tracer->TraceTheCall("-KFExceptionHandler*");

    EXPECT_EXIT(
        {
            tracer->BeginningOfThread("child");
            handler();
            const CallMarker marker("f");
            tracer->setActive(false);
            handler()->throwException(0, "NAME", "text", "F", 12);
        },
        testing::ExitedWithCode(0), "");

    EXPECT_EQ(tracer.linesOfAllThreads(), "[<id>][child          ]f\n");
}

TEST(KFExceptionHandler, ReportsOnTheThreadThatViolates)
{
    PublishedTracer tracer;
    tracer->TraceTheCall("-KFExceptionHandler*");

    EXPECT_EXIT(violateInWorker(), testing::ExitedWithCode(0), "");

    EXPECT_EQ(
        tracer.linesOfAllThreads(),
        "[<id>][worker         ]working\n"
        "[<id>][worker         ]  SIGNAL_FILTER\n"
        "[<id>][worker         ]    >> [E] REQUIRE VIOLATION : x != NULL - In File : F - "
        "At Line : 12\n"
        "\n-------------- CALLSTACK --------------\n"
        "[<id>][worker         ]    [2] SIGNAL_FILTER\n"
        "[<id>][worker         ]    [1] working\n"
        "---------------------------------------\n"
        "\n-------------- OBJECT(S) COUNT --------------\n"
        "Class = KFExceptionHandler            , count = 000001\n"
        "---------------------------------------------\n");
}

TEST(KFExceptionHandler, ReportsTheOpenCallsOfEveryThread)
{
    PublishedTracer tracer;
    tracer->TraceTheCall("-*");

    EXPECT_EXIT(
        {
            tracer->BeginningOfThread("child");
            const CallMarker marker("waiting");
            violateInWorker();
        },
        testing::ExitedWithCode(0), "");

    const std::string waiting = "\n-------------- CALLSTACK --------------\n"
                                "[<id>][child          ]    [1] waiting\n"
                                "---------------------------------------\n";
    const std::string violating = "\n-------------- CALLSTACK --------------\n"
                                  "[<id>][worker         ]    [2] SIGNAL_FILTER\n"
                                  "[<id>][worker         ]    [1] working\n"
                                  "---------------------------------------\n";
    const std::string objects = "\n-------------- OBJECT(S) COUNT --------------\n"
                                "Class = KFExceptionHandler            , count = 000001\n"
                                "---------------------------------------------\n";
    EXPECT_THAT(
        tracer.linesOfAllThreads(),
        testing::AnyOf(waiting + violating + objects, violating + waiting + objects))
        << "in the order of the thread ids";
}

TEST(KFExceptionHandler, IsMadeOnceForManyThreads)
{
    constexpr int threadCount = 16;
    PublishedTracer tracer;
    tracer->setMsgTypeMask(0);

    EXPECT_EXIT(
        {
            std::latch begun(threadCount + 1);
            // Nobody gets far in making one before all have begun to.
            tracer.mutex().acquire();
            std::vector<std::thread> threads;
            for (int thread = 0; thread < threadCount; ++thread)
                threads.emplace_back([&begun] {
                    begun.arrive_and_wait();
                    handler();
                });
            begun.arrive_and_wait();
            tracer.mutex().release();
            for (std::thread& thread : threads)
                thread.join();
            _exit(7);
        },
        testing::ExitedWithCode(7), "");

    EXPECT_EQ(tracer.linesOfAllThreads(), "[<id>][<id>]KFExceptionHandler::constructor\n");
}

TEST(Contract, ThatHoldsDoesNothing)
{
    EXPECT_TRUE(Contract::require(true, "x", "F", 1));
    EXPECT_TRUE(Contract::ensure(true, "x", "F", 2));
    EXPECT_TRUE(Contract::assertThat(true, "x", "F", 3));

    EXPECT_EQ(installed(SIGUSR1).sa_handler, SIG_DFL);
}

TEST(Contract, ThatDoesNotHoldSaysSoWhereItsReportIsBlocked)
{
    EXPECT_EXIT(
        {
            const BlockedViolations blocked;
            const bool anyHolds = Contract::require(false, "x", "F", 1) ||
                                  Contract::ensure(false, "x", "F", 2) ||
                                  Contract::assertThat(false, "x", "F", 3);
            _exit(anyHolds ? 8 : 7);
        },
        testing::ExitedWithCode(7), "");
}

TEST(Contract, ThatDoesNotHoldIsReportedByItsKind)
{
    EXPECT_CRASH_REPORT(
        Contract::require(false, "x", "A/B", 1),
        "REQUIRE VIOLATION : x - In File : A/B - At Line : 1");
    EXPECT_CRASH_REPORT(
        Contract::ensure(false, "y", "A/B", 2),
        "ENSURE VIOLATION : y - In File : A/B - At Line : 2");
    EXPECT_CRASH_REPORT(
        Contract::assertThat(false, "z", "A/B", 3),
        "ASSERT VIOLATION : z - In File : A/B - At Line : 3");
}

/// The code is in no report.
TEST(Contract, ThatDoesNotHoldKeepsTheCodeZero)
{
    for (const auto check : {&Contract::require, &Contract::ensure, &Contract::assertThat})
        EXPECT_EXIT(
            {
                const BlockedViolations blocked;
                check(false, "x", "F", 1);
                _exit(KeptViolation::parameters().at("Code") == "0" ? 7 : 8);
            },
            testing::ExitedWithCode(7), "");
}

TEST(Contract, TellsTheLineOfTheCheckWhereNoOtherIsGiven)
{
    const std::string reported = " VIOLATION : x - In File : A/B - At Line : ";

    EXPECT_CRASH_REPORT(requireBelow(), "REQUIRE" + reported + std::to_string(c_lineBefore + 1));
    EXPECT_CRASH_REPORT(ensureBelow(), "ENSURE" + reported + std::to_string(c_lineBefore + 2));
    EXPECT_CRASH_REPORT(assertBelow(), "ASSERT" + reported + std::to_string(c_lineBefore + 3));
}
