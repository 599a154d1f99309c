#include "Diagnostics.h"

#include "CallMarker.h"
#include "Logger.h"
#include "PublishedTracer.h"
#include "TemporaryFolder.h"

#include <cstdlib>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

TEST(Diagnostics, DrainWritesThePendingTraceLines)
{
    PublishedTracer tracer;
    tracer->setSynchronous(false);
    const CallMarker marker("f");
    ASSERT_EQ(tracer.lines(), "");

    Diagnostics::drain();

    EXPECT_EQ(tracer.lines(), "[<id>][test           ]f\n");
    EXPECT_TRUE(tracer->isActive());
}

TEST(Diagnostics, DrainWritesThePendingLogLines)
{
    const TemporaryFolder folder;
    Logger logger;
    logger.SetFileName(folder.file("log"));
    Logger::SetInstance(&logger);
    logger.PrintString("pending\n");

    Diagnostics::drain();

    EXPECT_EQ(folder.read("log_0.txt"), "pending\n");
}

TEST(Diagnostics, DrainWritesTheLogAlsoWhenTheTraceCannotBeOpened)
{
    PublishedTracer tracer;
    tracer->SetFileName(tracer.folder().file("missing/trace"));
    tracer->setSynchronous(false);
    tracer->PrintString("waiting\n");
    Logger logger;
    logger.SetFileName(tracer.folder().file("log"));
    Logger::SetInstance(&logger);
    logger.PrintString("pending\n");

    testing::internal::CaptureStderr();
    Diagnostics::drain();

    EXPECT_NE(testing::internal::GetCapturedStderr(), "");
    EXPECT_FALSE(tracer->areAllMsgFlushed());
    EXPECT_EQ(tracer.folder().read("log_0.txt"), "pending\n");
}

TEST(Diagnostics, PendingTraceLinesAreWrittenWhenAMissingLogFileNameEndsTheProcess)
{
    PublishedTracer tracer;
    tracer->setSynchronous(false);
    Logger logger;
    Logger::SetInstance(&logger);
    const std::string file = tracer.folder().write("logger.cfg", "LOG_ON\n");

    EXPECT_EXIT(
        {
            tracer->PrintString("pending\n");
            logger.ReadConfigFile(file.c_str());
        },
        testing::ExitedWithCode(1), "");

    EXPECT_EQ(tracer.lines(), "pending\n");
}

TEST(Diagnostics, DrainsOnceAtTheEndOfTheProcessHoweverOftenThatIsAskedFor)
{
    PublishedTracer tracer;
    tracer->SetFileName(tracer.folder().file("missing/trace"));
    tracer->setSynchronous(false);

    EXPECT_EXIT(
        {
            tracer->PrintString("waiting\n");
            Diagnostics::drainAtExit();
            Diagnostics::drainAtExit();
            std::exit(3);
        },
        testing::ExitedWithCode(3),
        testing::Eq("Tracer : can't open " + tracer.folder().file("missing/trace_0.txt") + "\n"));
}

TEST(Diagnostics, DrainWithoutTracerAndLoggerDoesNothing)
{
    ASSERT_EQ(Tracer::GetInstance(), nullptr);

    Diagnostics::drain();

    EXPECT_EQ(Tracer::GetInstance(), nullptr);
}
