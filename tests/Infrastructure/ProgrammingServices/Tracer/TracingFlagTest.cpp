#include "CallMarker.h"
#include "Tracer.h"

#include <functional>
#include <thread>
#include <utility>

#include <gtest/gtest.h>
#include <pthread.h>

namespace {

/// Happens right after this thread has released a mutex, once.
thread_local std::function<void()> afterTheNextRelease;

} // namespace

extern "C" {
// NOLINTBEGIN(bugprone-reserved-identifier): the names that the linker's --wrap gives
int __real_pthread_mutex_unlock(pthread_mutex_t* mutex);

int __wrap_pthread_mutex_unlock(pthread_mutex_t* mutex)
{
    const int result = __real_pthread_mutex_unlock(mutex);
    if (const auto action = std::exchange(afterTheNextRelease, nullptr))
        action();
    return result;
}
// NOLINTEND(bugprone-reserved-identifier)
}

TEST(TracingFlag, IsSetByAnActivationWhileTheTracerIsPublished)
{
    Tracer tracer;
    afterTheNextRelease = [&tracer] { std::thread([&tracer] { tracer.setActive(true); }).join(); };

    Tracer::SetInstance(&tracer);

    EXPECT_EQ(afterTheNextRelease, nullptr);
    EXPECT_TRUE(CallMarker::isTracing());
}
