#include "CallMarker.h"
#include "Console.h"
#include "Contract.h"
#include "CrashReport.h"
#include "Diagnostics.h"
#include "KFThread.h"
#include "Logger.h"
#include "PublishedTracer.h"

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <string>
#include <thread>
#include <utility>

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

/// Does what the test wants when it is told of a report.
class ActingListener : public KFExceptionListener {
public:
    explicit ActingListener(std::function<void()> action) : m_action(std::move(action)) {}
    void onReport(const std::string& /*message*/) override { m_action(); }

private:
    std::function<void()> m_action;
};

class CrashEnd : public testing::Test {
protected:
    /// A report during which the listener does something, then tells the standard error.
    void reportAnd(const std::function<void()>& action)
    {
        ActingListener acting(action);
        KFExceptionHandler::GetInstance()->addListener(acting);
        CrashReport::printOnStandardError();
        raise(SIGTERM);
    }
};

/// The whole trace of a SIGTERM that met the thread "child" outside any call.
std::string reportOfTheChild()
{
    return "[<id>][child          ]SIGNAL_FILTER\n"
           "[<id>][child          ]  >> [E] SIGNAL_SOTWARE_TERMINATION\n"
           "\n-------------- CALLSTACK --------------\n"
           "[<id>][child          ]    [1] SIGNAL_FILTER\n"
           "---------------------------------------\n"
           "\n-------------- OBJECT(S) COUNT --------------\n"
           "Class = KFExceptionHandler            , count = 000001\n"
           "---------------------------------------------\n";
}

unsigned int secondsToTheAlarm = 0;
int linesBeforeTheCrash = 0;
thread_local bool crashAtTheNextMutex = false;

void waitForEver()
{
    while (true)
        pause();
}

/// A report of the thread "child" with an exit handler that runs before the one that drains.
void reportBefore(void (*exitHandler)(), PublishedTracer& tracer)
{
    tracer->setSynchronous(false);
    tracer->TraceTheCall("-KFExceptionHandler*");
    tracer->BeginningOfThread("child");
    KFExceptionHandler::GetInstance();
    Diagnostics::drainAtExit();
    std::atexit(exitHandler);
    tracer->PrintString("pending\n");
    raise(SIGTERM);
}

void closeReaderOfStandardOutput()
{
    int ends[2] = {};
    ASSERT_EQ(pipe(ends), 0);
    dup2(ends[1], STDOUT_FILENO);
    close(ends[0]);
    close(ends[1]);
}

/// Violates on another thread, while this one holds the tracer's mutex for ever.
void violateWhileTheTracerIsHeld(PublishedTracer& tracer)
{
    tracer.mutex().acquire();
    std::thread([] { Contract::require(false, "x", "F", 12); }).join();
}

} // namespace

extern "C" {
// NOLINTBEGIN(bugprone-reserved-identifier): the names that the linker's --wrap gives
int __real_fputs(const char* text, std::FILE* stream);

int __wrap_fputs(const char* text, std::FILE* stream)
{
    if (linesBeforeTheCrash > 0 && --linesBeforeTheCrash == 0)
        raise(SIGTERM);
    return __real_fputs(text, stream);
}

int __real_pthread_mutex_lock(pthread_mutex_t* mutex);

int __wrap_pthread_mutex_lock(pthread_mutex_t* mutex)
{
    if (std::exchange(crashAtTheNextMutex, false))
        raise(SIGTERM);
    return __real_pthread_mutex_lock(mutex);
}

unsigned int __real_alarm(unsigned int seconds);

unsigned int __wrap_alarm(unsigned int seconds)
{
    secondsToTheAlarm = seconds;
    return __real_alarm(seconds);
}
// NOLINTEND(bugprone-reserved-identifier)
}

TEST_F(CrashEnd, TellsTheListenersInTheOrderTheyWereAdded)
{
    ActingListener first([] { Console::writeError("1"); });
    ActingListener second([] { Console::writeError("2"); });
    ActingListener third([] { Console::writeError("3"); });

    EXPECT_EXIT(
        {
            KFExceptionHandler::GetInstance()->addListener(first);
            KFExceptionHandler::GetInstance()->addListener(second);
            KFExceptionHandler::GetInstance()->addListener(third);
            raise(SIGTERM);
        },
        testing::ExitedWithCode(0), testing::Eq("123"));
}

TEST_F(CrashEnd, TellsTheListenersWhenTheReportIsTracedToItsEnd)
{
    PublishedTracer tracer;
    tracer->TraceTheCall("-KFExceptionHandler*");

    EXPECT_EXIT(
        {
            tracer->BeginningOfThread("child");
            reportAnd([&tracer] { Console::writeError(tracer.linesOfAllThreads()); });
        },
        testing::ExitedWithCode(0),
        testing::Eq(reportOfTheChild() + "SIGNAL_SOTWARE_TERMINATION\n"));
}

TEST_F(CrashEnd, SameSignalDuringTheReportEndsTheProcessAtOnce)
{
    EXPECT_EXIT(reportAnd([] { raise(SIGTERM); }), testing::ExitedWithCode(0), testing::Eq(""));
}

TEST_F(CrashEnd, OtherSignalDuringTheReportEndsTheProcessAtOnce)
{
    EXPECT_EXIT(reportAnd([] { raise(SIGHUP); }), testing::ExitedWithCode(0), testing::Eq(""));
}

TEST_F(CrashEnd, ViolationDuringTheReportEndsTheProcessAtOnce)
{
    EXPECT_EXIT(
        reportAnd([] { Contract::require(false, "x", "F", 1); }), testing::ExitedWithCode(0),
        testing::Eq(""));
}

TEST_F(CrashEnd, SignalOnAnotherThreadDuringTheReportEndsTheProcessAtOnce)
{
    EXPECT_EXIT(
        reportAnd([] { std::thread([] { raise(SIGTERM); }).join(); }), testing::ExitedWithCode(0),
        testing::Eq(""));
}

TEST_F(CrashEnd, ReportHasFiveSeconds)
{
    EXPECT_EXIT(
        reportAnd([] { Console::writeError(std::to_string(secondsToTheAlarm) + " seconds\n"); }),
        testing::ExitedWithCode(0), testing::Eq("5 seconds\nSIGNAL_SOTWARE_TERMINATION\n"));
}

TEST_F(CrashEnd, ReportThatDoesNotEndIsCutOff)
{
    EXPECT_EXIT(reportAnd(waitForEver), testing::ExitedWithCode(0), testing::Eq(""));
}

TEST_F(CrashEnd, ReportIsCutOffAlsoWhenTheAlarmWasBlocked)
{
    EXPECT_EXIT(
        {
            sigset_t all{};
            sigfillset(&all);
            sigdelset(&all, SIGTERM);
            pthread_sigmask(SIG_BLOCK, &all, nullptr);
            reportAnd(waitForEver);
        },
        testing::ExitedWithCode(0), testing::Eq(""));
}

TEST_F(CrashEnd, EndOfTheProcessThatDoesNotEndIsCutOff)
{
    EXPECT_EXIT(
        {
            std::atexit(waitForEver);
            CrashReport::printOnStandardError();
            raise(SIGTERM);
        },
        testing::ExitedWithCode(0), testing::Eq("SIGNAL_SOTWARE_TERMINATION\n"));
}

TEST_F(CrashEnd, TellsTheListenersAndWritesTheLogWhenTheTracerCannotBeHad)
{
    PublishedTracer tracer;
    Logger logger;
    logger.SetFileName(tracer.folder().file("log"));
    Logger::SetInstance(&logger);

    EXPECT_EXIT(
        {
            CrashReport::printOnStandardError();
            logger.PrintString("pending log\n");
            violateWhileTheTracerIsHeld(tracer);
        },
        testing::ExitedWithCode(0),
        testing::Eq("REQUIRE VIOLATION : x - In File : F - At Line : 12\n"));

    EXPECT_EQ(tracer.folder().read("log_0.txt"), "pending log\n");
}

TEST_F(CrashEnd, WritesThePendingTraceAndLogLines)
{
    PublishedTracer tracer;
    tracer->setSynchronous(false);
    Logger logger;
    logger.SetFileName(tracer.folder().file("log"));
    Logger::SetInstance(&logger);

    EXPECT_EXIT(
        {
            tracer->PrintString("pending trace\n");
            logger.PrintString("pending log\n");
            Contract::require(false, "x", "F", 12);
        },
        testing::ExitedWithCode(0), "");

    EXPECT_EQ(tracer.lines().substr(0, 14), "pending trace\n");
    EXPECT_NE(tracer.lines().find("REQUIRE VIOLATION : x"), std::string::npos);
    EXPECT_EQ(tracer.folder().read("log_0.txt"), "pending log\n");
}

TEST_F(CrashEnd, WritesTheReportAlsoWhenALaterExitHandlerFaults)
{
    PublishedTracer tracer;

    EXPECT_EXIT(reportBefore([] { raise(SIGSEGV); }, tracer), testing::ExitedWithCode(0), "");

    EXPECT_EQ(tracer.linesOfAllThreads(), "pending\n" + reportOfTheChild());
}

TEST_F(CrashEnd, WritesTheReportAlsoWhenALaterExitHandlerNeverReturns)
{
    PublishedTracer tracer;

    EXPECT_EXIT(reportBefore(waitForEver, tracer), testing::ExitedWithCode(0), "");

    EXPECT_EQ(tracer.linesOfAllThreads(), "pending\n" + reportOfTheChild());
}

TEST_F(CrashEnd, WritesThePendingLinesAndTheReportWhenASignalInterruptsAnOrdinaryEnd)
{
    PublishedTracer tracer;
    tracer->setSynchronous(false);
    tracer->TraceTheCall("-KFExceptionHandler*");

    EXPECT_EXIT(
        {
            tracer->BeginningOfThread("child");
            KFExceptionHandler::GetInstance();
            Diagnostics::drainAtExit();
            tracer->PrintString("first\n");
            tracer->PrintString("second\n");
            tracer->PrintString("third\n");
            linesBeforeTheCrash = 2;
            std::exit(3);
        },
        testing::ExitedWithCode(0), "");

    EXPECT_EQ(tracer.linesOfAllThreads(), "first\nsecond\nthird\n" + reportOfTheChild());
}

TEST_F(CrashEnd, WritesWhatALaterExitHandlerTraces)
{
    PublishedTracer tracer;
    tracer->setSynchronous(false);

    EXPECT_EXIT(
        {
            KFExceptionHandler::GetInstance();
            Diagnostics::drainAtExit();
            std::atexit([] { Tracer::GetInstance()->PrintString("late\n"); });
            raise(SIGTERM);
        },
        testing::ExitedWithCode(0), "");

    EXPECT_THAT(tracer.lines(), testing::EndsWith("-----\nlate\n"));
}

TEST_F(CrashEnd, GivesUpLinesWhoseFileCannotBeOpened)
{
    PublishedTracer tracer;
    tracer->setSynchronous(false);
    ASSERT_EQ(mkdir(tracer.folder().file("trace_0.txt").c_str(), 0700), 0);

    EXPECT_EXIT(
        Contract::require(false, "x", "F", 12), testing::ExitedWithCode(0),
        testing::Eq("Tracer : can't open " + tracer.folder().file("trace_0.txt") + "\n"));
}

TEST_F(CrashEnd, ReportsOnAThreadThatWaitsForTheMutexOfAFailedOpen)
{
    PublishedTracer tracer;
    tracer->setSynchronous(false);
    ASSERT_EQ(mkdir(tracer.folder().file("trace_0.txt").c_str(), 0700), 0);
    Logger logger;
    logger.SetFileName(tracer.folder().file("log"));
    Logger::SetInstance(&logger);

    EXPECT_EXIT(
        {
            CrashReport::printOnStandardError();
            logger.PrintString("pending log\n");
            std::thread([&tracer] { tracer->WriteOnFile(); }).join();
            crashAtTheNextMutex = true;
            tracer->PrintString("waits\n");
        },
        testing::ExitedWithCode(0),
        testing::Eq(
            "Tracer : can't open " + tracer.folder().file("trace_0.txt") +
            "\nSIGNAL_SOTWARE_TERMINATION\n"));

    EXPECT_EQ(tracer.folder().read("log_0.txt"), "pending log\n");
}

TEST_F(CrashEnd, GoesOnInTheFileOfThePassThatTheCrashInterrupted)
{
    PublishedTracer tracer;
    tracer->setSynchronous(false);
    std::string pending;
    for (int number = 0; number < 1000; ++number) {
        const std::string line = "pending line " + std::to_string(number) + "\n";
        tracer->PrintString(line);
        pending += line;
    }

    EXPECT_EXIT(
        {
            KFExceptionHandler::GetInstance();
            linesBeforeTheCrash = 500;
            tracer->WriteOnFile();
        },
        testing::ExitedWithCode(0), "");

    const std::string lines = tracer.lines();
    EXPECT_EQ(lines.substr(0, pending.size()), pending);
    EXPECT_NE(lines.find("SIGNAL_SOTWARE_TERMINATION\n"), std::string::npos);
}

TEST_F(CrashEnd, ReportsAlsoWhenNobodyReadsTheConsole)
{
    PublishedTracer tracer;
    tracer->SetFileName("console");

    EXPECT_EXIT(
        {
            closeReaderOfStandardOutput();
            reportAnd([] {});
        },
        testing::ExitedWithCode(0), testing::Eq("SIGNAL_SOTWARE_TERMINATION\n"));
}
