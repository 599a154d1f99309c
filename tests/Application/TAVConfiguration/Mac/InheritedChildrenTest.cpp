#include "InheritedChildren.h"

#include "CrashReport.h"
#include "KFExceptionHandler.h"
#include "Pipe.h"

#include <cerrno>
#include <csignal>
#include <utility>

#include <gtest/gtest.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

/// Keeps the signal of children pending for one scope.
class PendingSignalOfChildren {
public:
    PendingSignalOfChildren()
    {
        sigset_t signals{};
        sigemptyset(&signals);
        sigaddset(&signals, SIGCHLD);
        pthread_sigmask(SIG_BLOCK, &signals, &m_former);
    }
    ~PendingSignalOfChildren() { pthread_sigmask(SIG_SETMASK, &m_former, nullptr); }

    PendingSignalOfChildren(const PendingSignalOfChildren&) = delete;
    PendingSignalOfChildren& operator=(const PendingSignalOfChildren&) = delete;

private:
    sigset_t m_former{};
};

Pipe openPipe()
{
    Pipe pipe;
    EXPECT_EQ(pipe.open(), 0);
    return pipe;
}

/// A child of this process, which lasts until it is told otherwise, and no longer than this one.
class Child {
public:
    Child() : Child(openPipe(), openPipe()) {}

    Child(const Child&) = delete;
    Child& operator=(const Child&) = delete;

    pid_t process() const { return m_process; }

    /// Each returns once the signal that tells of it has been delivered, or is pending.
    void end() const { become(SIGKILL, WEXITED); }
    void halt() const { become(SIGSTOP, WSTOPPED); }
    void goOn() const { become(SIGCONT, WCONTINUED); }

    /// Has the child send this process the signal that would tell of the child's own end.
    void pretend() const
    {
        EXPECT_EQ(write(m_orders.get(), "x", 1), 1);
        pause();
    }

private:
    void become(int signal, int state) const
    {
        const PendingSignalOfChildren untilThen;
        kill(m_process, signal);
        siginfo_t info{};
        waitid(P_PID, static_cast<id_t>(m_process), &info, state | WNOWAIT);
    }

    Child(Pipe ready, Pipe orders) : m_process(fork())
    {
        if (m_process == 0)
            live(ready.writeEnd, orders.readEnd);
        char isReady = 0;
        EXPECT_EQ(read(ready.readEnd.get(), &isReady, 1), 1);
        m_orders = std::move(orders.writeEnd);
    }

    [[noreturn]] static void live(const FileDescriptor& ready, const FileDescriptor& orders)
    {
        prctl(PR_SET_PDEATHSIG, SIGKILL);
        char byte = 'x';
        if (write(ready.get(), &byte, 1) == 1)
            while (read(orders.get(), &byte, 1) == 1)
                kill(getppid(), SIGCHLD);
        _exit(0);
    }

    FileDescriptor m_orders{-1};
    pid_t m_process;
};

/// What the start-up does with the children that there are.
void startUp()
{
    InheritedChildren::note();
    KFExceptionHandler::GetInstance();
    InheritedChildren::leaveUnheard();
}

struct sigaction actionForChildren()
{
    struct sigaction action {};
    sigaction(SIGCHLD, nullptr, &action);
    return action;
}

[[noreturn]] void endWith(bool wanted)
{
    _exit(wanted ? 7 : 8);
}

/// Expects the process that runs it to come to its end without a report.
void expectUnheard(void (*run)())
{
    EXPECT_EXIT(
        {
            CrashReport::printOnStandardError();
            run();
            endWith(true);
        },
        testing::ExitedWithCode(7), "");
}

void expectReported(void (*run)())
{
    EXPECT_CRASH_REPORT(run(), "SIGNAL_SIGCHLD");
}

} // namespace

TEST(InheritedChildren, EndUnheard)
{
    expectUnheard([] {
        const Child first;
        const Child second;
        startUp();

        first.end();
        second.end();
    });
}

TEST(InheritedChildren, HaltAndGoOnUnheard)
{
    expectUnheard([] {
        const Child child;
        startUp();

        child.halt();
        child.goOn();
    });
}

TEST(InheritedChildren, EndUnheardWhileTheStartUpIsUnderWay)
{
    expectUnheard([] {
        const Child child;
        InheritedChildren::note();
        KFExceptionHandler::GetInstance();

        child.end();
        InheritedChildren::leaveUnheard();
    });
}

TEST(InheritedChildren, EndUnheardAllAtOnce)
{
    expectUnheard([] {
        const Child first;
        const Child second;
        startUp();

        const PendingSignalOfChildren once;
        first.end();
        second.end();
    });
}

TEST(InheritedChildren, LeaveNothingOfThemselvesBehind)
{
    expectUnheard([] {
        const Child child;
        startUp();

        child.end();

        endWith(waitpid(-1, nullptr, WNOHANG) == -1);
    });
}

TEST(InheritedChildren, LeaveTheErrorOfTheCodeThatTheyInterrupt)
{
    expectUnheard([] {
        const Child child;
        startUp();
        {
            const PendingSignalOfChildren once;
            child.end();
            errno = EXDEV;
        }
        endWith(errno == EXDEV);
    });
}

TEST(InheritedChildren, InterruptNoSystemCall)
{
    expectUnheard([] {
        const Child child;

        startUp();

        endWith((actionForChildren().sa_flags & SA_RESTART) != 0);
    });
}

TEST(InheritedChildren, DoNotKeepTheEndOfAnotherChildFromTheReport)
{
    expectReported([] {
        const Child inherited;
        startUp();
        const Child own;

        own.end();
    });
}

TEST(InheritedChildren, DoNotKeepTheEndOfAnotherChildFromTheReportHoweverOftenTheyAreLeftUnheard)
{
    expectReported([] {
        const Child inherited;
        startUp();
        InheritedChildren::leaveUnheard();
        const Child own;

        own.end();
    });
}

TEST(InheritedChildren, DoNotKeepTheEndOfAnotherChildFromTheReportThatHasBeenWaitedFor)
{
    expectReported([] {
        const Child inherited;
        startUp();
        const Child own;

        const PendingSignalOfChildren once;
        own.end();
        waitpid(own.process(), nullptr, 0);
    });
}

TEST(InheritedChildren, DoNotKeepTheEndOfAnotherChildFromTheReportThatTheOneSignalStandsForToo)
{
    expectReported([] {
        const Child first;
        const Child second;
        startUp();
        const Child own;

        const PendingSignalOfChildren once;
        first.end();
        second.end();
        own.end();
    });
}

TEST(InheritedChildren, DoNotKeepTheHaltOfAnotherChildFromTheReportThatTheOneSignalStandsForToo)
{
    expectReported([] {
        const Child inherited;
        startUp();
        const Child own;

        const PendingSignalOfChildren once;
        inherited.halt();
        own.halt();
    });
}

TEST(InheritedChildren, AreHeardOfWhenTheySendTheSignalThemselves)
{
    expectReported([] {
        const Child child;
        startUp();

        child.pretend();
    });
}

TEST(InheritedChildren, LeaveEverythingAsItIsWhereThereAreNone)
{
    expectUnheard([] {
        InheritedChildren::note();
        sigset_t mask{};
        pthread_sigmask(SIG_BLOCK, nullptr, &mask);
        KFExceptionHandler::GetInstance();
        const auto former = actionForChildren();

        InheritedChildren::leaveUnheard();

        const auto action = actionForChildren();
        endWith(
            sigismember(&mask, SIGCHLD) == 0 && action.sa_handler == former.sa_handler &&
            action.sa_flags == former.sa_flags);
    });
}

TEST(InheritedChildren, AreJoinedByNoOrphan)
{
    expectUnheard([] {
        prctl(PR_SET_CHILD_SUBREAPER, 1);

        InheritedChildren::note();

        int takesOrphansIn = 1;
        prctl(PR_GET_CHILD_SUBREAPER, &takesOrphansIn);
        endWith(takesOrphansIn == 0);
    });
}
