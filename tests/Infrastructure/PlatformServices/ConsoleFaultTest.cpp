#include "Console.h"
#include "PipedStream.h"
#include "SystemCallFaults.h"

#include <cerrno>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

TEST(ConsoleFault, LineIsWrittenInOneGoThatNoOtherWriterComesBetween)
{
    const PipedStream output(STDOUT_FILENO);
    const SystemCallFaults calls;

    Console::writeLine("text");

    EXPECT_THAT(calls.steps(), testing::ElementsAre("write"));
}

TEST(ConsoleFault, RestOfALineFollowsThePartThatTheStreamTook)
{
    const PipedStream output(STDOUT_FILENO);
    {
        SystemCallFaults faults;
        faults.limitTransfers(3);
        Console::writeLine("0123456789");
    }

    EXPECT_EQ(output.read(), "0123456789\n");
}

TEST(ConsoleFault, LineIsWrittenAfterASignalThatInterruptedIt)
{
    const PipedStream output(STDOUT_FILENO);
    SystemCallFaults faults;
    faults.fail("write", EINTR);

    Console::writeLine("interrupted");
    Console::writeLine("next");

    EXPECT_EQ(output.read(), "interrupted\nnext\n");
}

TEST(ConsoleFault, LineThatTheStreamDoesNotTakeIsDropped)
{
    const PipedStream output(STDOUT_FILENO);
    SystemCallFaults faults;
    faults.fail("write", EIO);

    Console::writeLine("dropped");
    Console::writeLine("kept");

    EXPECT_EQ(output.read(), "kept\n");
}

TEST(ConsoleFault, LineIsDroppedByAStreamThatTakesNothingOfIt)
{
    const PipedStream output(STDOUT_FILENO);
    {
        SystemCallFaults faults;
        faults.limitTransfers(0);
        Console::writeLine("dropped");
    }

    Console::writeLine("kept");

    EXPECT_EQ(output.read(), "kept\n");
}
