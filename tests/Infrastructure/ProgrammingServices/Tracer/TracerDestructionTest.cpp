#include "CallMarker.h"
#include "PublishedTracer.h"
#include "TemporaryFolder.h"
#include "Waiting.h"

#include <atomic>
#include <memory>

#include <gtest/gtest.h>
#include <pthread.h>
#include <unistd.h>

namespace {

std::atomic<int> joins = 0;
std::atomic<bool> joinEndsTheProcess = false;

constexpr int c_joined = 8;

/// Destroys a tracer whose thread runs and in whose place another one is published.
void destroyAReplacedTracer(PublishedTracer& next)
{
    auto former = std::make_unique<Tracer>();
    former->SetFileName("msvc");
    former->Initialize();
    joinEndsTheProcess = true; // it would wait for ever
    former.reset();
    joinEndsTheProcess = false;
    next->setSynchronous(false);
}

} // namespace

extern "C" {
// NOLINTBEGIN(bugprone-reserved-identifier): the names that the linker's --wrap gives
int __real_pthread_join(pthread_t thread, void** result);

int __wrap_pthread_join(pthread_t thread, void** result)
{
    ++joins;
    if (joinEndsTheProcess)
        _exit(c_joined);
    return __real_pthread_join(thread, result);
}
// NOLINTEND(bugprone-reserved-identifier)
}

TEST(TracerDestruction, WaitsForTheThreadOfThePublishedTracer)
{
    joins = 0;
    {
        PublishedTracer tracer;
        tracer->setSynchronous(false);
        tracer->Initialize();
    }

    EXPECT_EQ(joins, 1);
    EXPECT_EQ(Tracer::GetInstance(), nullptr);
    EXPECT_FALSE(CallMarker::isTracing());
}

TEST(TracerDestruction, WaitsForNothingWithoutAThread)
{
    joins = 0;
    {
        const PublishedTracer tracer;
    }

    EXPECT_EQ(joins, 0);
    EXPECT_EQ(Tracer::GetInstance(), nullptr);
}

TEST(TracerDestruction, LeavesTheThreadOfAReplacedTracerToThePublishedOne)
{
    PublishedTracer next;

    EXPECT_EXIT(
        {
            destroyAReplacedTracer(next);
            next->PrintString("line\n");
            waitUntilWritten(*Tracer::GetInstance());
            _exit(7);
        },
        testing::ExitedWithCode(7), "");

    EXPECT_EQ(next.lines(), "line\n");
}

TEST(TracerDestruction, LeavesThePublishedTracerActive)
{
    PublishedTracer tracer;
    Tracer* const published = Tracer::GetInstance();

    {
        Tracer().setActive(true);
    }

    EXPECT_EQ(Tracer::GetInstance(), published);
    EXPECT_TRUE(CallMarker::isTracing());
}
