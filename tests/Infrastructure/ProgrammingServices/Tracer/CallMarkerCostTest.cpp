#include "Allocations.h"
#include "CallMarker.h"
#include "PublishedTracer.h"

#include <gtest/gtest.h>

namespace {

void openMarkers()
{
    const CallMarker function("function");
    const CallMarker method("A::method", &function);
    const CallMarker constructor("A", "A::constructor", true, &function);
    TAV_TRACE(method, TraceMsgType::E, "%s", "text");
}

} // namespace

TEST(CallMarkerCost, IsNoAllocationWithoutATracer)
{
    const Allocations allocations;

    openMarkers();

    EXPECT_EQ(allocations.count(), 0);
}

TEST(CallMarkerCost, IsNoAllocationWhileTheTracerIsInactive)
{
    PublishedTracer tracer;
    tracer->setActive(false);
    const Allocations allocations;

    openMarkers();

    EXPECT_EQ(allocations.count(), 0);
}

TEST(CallMarkerCost, IsCountedWhenTracing)
{
    PublishedTracer tracer;
    const Allocations allocations;

    openMarkers();

    EXPECT_GT(allocations.count(), 0);
}
