#include "Pipe.h"

#include "PublishedTracer.h"
#include "SystemCallFaults.h"

#include <cerrno>

#include <fcntl.h>
#include <gtest/gtest.h>

TEST(Pipe, LeadsFromItsWriteEndToItsReadEnd)
{
    Pipe pipe;

    EXPECT_EQ(pipe.open(), 0);

    char byte = 0;
    EXPECT_EQ(write(pipe.writeEnd.get(), "x", 1), 1);
    EXPECT_EQ(read(pipe.readEnd.get(), &byte, 1), 1);
    EXPECT_EQ(byte, 'x');
}

TEST(Pipe, HandsNoEndToAStartedProgram)
{
    Pipe pipe;

    pipe.open();

    EXPECT_EQ(fcntl(pipe.readEnd.get(), F_GETFD), FD_CLOEXEC);
    EXPECT_EQ(fcntl(pipe.writeEnd.get(), F_GETFD), FD_CLOEXEC);
}

TEST(Pipe, TellsTheErrorAlsoWhereTheTraceOfTheCallFails)
{
    PublishedTracer tracer;
    tracer->SetFileName(tracer.folder().file("missing/trace"));
    SystemCallFaults faults;
    faults.fail("pipe2", EMFILE);
    testing::internal::CaptureStderr();
    Pipe pipe;

    const int error = pipe.open();

    EXPECT_EQ(error, EMFILE);
    EXPECT_FALSE(pipe.readEnd.isOpen());
    EXPECT_NE(testing::internal::GetCapturedStderr(), "") << "the trace cannot be opened";
    tracer.mutex().release(); // kept where no file can be opened
}
