#include "InheritedState.h"

#include "ChildProcess.h"

#include <csignal>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

namespace {

bool isOpen(int descriptor)
{
    return fcntl(descriptor, F_GETFD) >= 0;
}

} // namespace

TEST(InheritedState, BlocksNoSignalAnyMore)
{
    EXPECT_TRUE(inChildProcess([] {
        sigset_t mask{};
        sigfillset(&mask);
        pthread_sigmask(SIG_BLOCK, &mask, nullptr);

        InheritedState::takeBack();

        pthread_sigmask(SIG_BLOCK, nullptr, &mask);
        return sigisemptyset(&mask) == 1;
    }));
}

TEST(InheritedState, BlocksTheSignalOfChildrenAloneWhereOneWasInherited)
{
    EXPECT_TRUE(inChildProcess([] {
        sigset_t mask{};
        sigfillset(&mask);
        pthread_sigmask(SIG_BLOCK, &mask, nullptr);
        const pid_t child = fork();
        if (child == 0)
            _exit(0);

        InheritedState::takeBack();

        pthread_sigmask(SIG_BLOCK, nullptr, &mask);
        const bool isBlocked = sigismember(&mask, SIGCHLD) == 1;
        sigdelset(&mask, SIGCHLD);
        return isBlocked && sigisemptyset(&mask) == 1;
    }));
}

TEST(InheritedState, LeavesNoStandardStreamsNumberToAFile)
{
    for (const int closed : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        EXPECT_TRUE(inChildProcess([closed] {
            close(closed);

            InheritedState::takeBack();

            return isOpen(closed) && open("/dev/null", O_RDONLY | O_CLOEXEC) > STDERR_FILENO;
        })) << closed;
    }
}

TEST(InheritedState, OpensAllStandardStreams)
{
    EXPECT_TRUE(inChildProcess([] {
        for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
            close(stream);

        InheritedState::takeBack();

        return isOpen(STDIN_FILENO) && isOpen(STDOUT_FILENO) && isOpen(STDERR_FILENO);
    }));
}

TEST(InheritedState, LeavesStandardStreamsThatAreOpen)
{
    EXPECT_TRUE(inChildProcess([] {
        const int zero = open("/dev/zero", O_RDONLY | O_CLOEXEC);
        dup2(zero, STDIN_FILENO);

        InheritedState::takeBack();

        char byte = 1;
        return read(STDIN_FILENO, &byte, 1) == 1 && byte == 0;
    }));
}
