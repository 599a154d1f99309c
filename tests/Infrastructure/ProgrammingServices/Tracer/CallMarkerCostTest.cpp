#include "CallMarker.h"
#include "PublishedTracer.h"

#include <cstdlib>
#include <new>

#include <gtest/gtest.h>

namespace {

int allocations = 0;

void openMarkers()
{
    const CallMarker function("function");
    const CallMarker method("A::method", &function);
    const CallMarker constructor("A", "A::constructor", true, &function);
    TAV_TRACE(method, TraceMsgType::E, "%s", "text");
}

} // namespace

void* operator new(std::size_t size)
{
    ++allocations;
    if (void* const memory = std::malloc(size))
        return memory;
    throw std::bad_alloc();
}

void operator delete(void* memory) noexcept
{
    std::free(memory);
}

void operator delete(void* memory, std::size_t /*size*/) noexcept
{
    std::free(memory);
}

TEST(CallMarkerCost, IsNoAllocationWithoutATracer)
{
    const int before = allocations;

    openMarkers();

    EXPECT_EQ(allocations, before);
}

TEST(CallMarkerCost, IsNoAllocationWhileTheTracerIsInactive)
{
    PublishedTracer tracer;
    tracer->setActive(false);
    const int before = allocations;

    openMarkers();

    EXPECT_EQ(allocations, before);
}

TEST(CallMarkerCost, IsCountedWhenTracing)
{
    PublishedTracer tracer;
    const int before = allocations;

    openMarkers();

    EXPECT_GT(allocations, before);
}
