#include "CallMarker.h"
#include "ContendedMutex.h"
#include "PublishedTracer.h"
#include "ThreadTracer.h"

#include <optional>

#include <gtest/gtest.h>

TEST(GuardedStack, IsLeftUnderTheMutexOfTheTracer)
{
    const PublishedTracer published;
    std::optional<CallMarker> marker;

    EXPECT_TRUE(waitsFor(
        Tracer::GetInstance()->getMutex(), [&marker] { marker.reset(); },
        [&marker] { marker.emplace("f"); }));
}

TEST(GuardedStack, IsPrintedUnderTheMutexOfTheTracer)
{
    PublishedTracer tracer;
    ThreadTracer thread(*Tracer::GetInstance(), "without calls");

    EXPECT_TRUE(waitsFor(tracer->getMutex(), [&thread] { thread.PrintStack(); }));
}
