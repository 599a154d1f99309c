#include "CallMarker.h"
#include "ContendedMutex.h"
#include "PublishedTracer.h"

#include <optional>

#include <gtest/gtest.h>

TEST(GuardedStack, IsLeftUnderTheMutexOfTheTracer)
{
    PublishedTracer tracer;
    std::optional<CallMarker> marker;

    EXPECT_TRUE(waitsFor(
        tracer.mutex(), [&marker] { marker.reset(); }, [&marker] { marker.emplace("f"); }));
}

TEST(GuardedStack, IsPrintedUnderTheMutexOfTheTracer)
{
    PublishedTracer tracer;

    EXPECT_TRUE(waitsFor(tracer.mutex(), [&tracer] { tracer->PrintStacks(); }));
}
