#include "Diagnostics.h"

#include "CallMarker.h"
#include "PublishedTracer.h"

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

TEST(Diagnostics, DrainWithoutTracerAndLoggerDoesNothing)
{
    ASSERT_EQ(Tracer::GetInstance(), nullptr);

    Diagnostics::drain();

    EXPECT_EQ(Tracer::GetInstance(), nullptr);
}
