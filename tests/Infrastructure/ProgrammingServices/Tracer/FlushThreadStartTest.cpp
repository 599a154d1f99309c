#include "ContendedMutex.h"
#include "Logger.h"
#include "TemporaryFolder.h"
#include "Tracer.h"

#include <cerrno>
#include <functional>
#include <future>
#include <utility>

#include <gtest/gtest.h>
#include <pthread.h>

namespace {

/// Happens once, right before a thread's object is made.
std::function<void()> beforeTheNextThread;
int startedThreads = 0;
bool startsNoThread = false;

} // namespace

extern "C" {
// NOLINTBEGIN(bugprone-reserved-identifier): the names that the linker's --wrap gives
int __real_pthread_attr_init(pthread_attr_t* attributes);
int __real_pthread_create(
    pthread_t* thread, const pthread_attr_t* attributes, void* (*entry)(void*), void* argument);

int __wrap_pthread_attr_init(pthread_attr_t* attributes)
{
    if (const auto action = std::exchange(beforeTheNextThread, nullptr))
        action();
    return __real_pthread_attr_init(attributes);
}

int __wrap_pthread_create(
    pthread_t* thread, const pthread_attr_t* attributes, void* (*entry)(void*), void* argument)
{
    if (startsNoThread)
        return EAGAIN;
    ++startedThreads;
    return __real_pthread_create(thread, attributes, entry, argument);
}
// NOLINTEND(bugprone-reserved-identifier)
}

/// What the background thread of a facility does at its start; the facility is the test's.
template<typename Facility>
class FlushThreadStart : public testing::Test {
protected:
    FlushThreadStart()
    {
        Facility::SetInstance(&m_facility);
        m_facility.SetFileName(m_folder.file("app"));
    }
    ~FlushThreadStart() override
    {
        startedThreads = 0;
        startsNoThread = false;
    }

    TemporaryFolder m_folder;
    Facility m_facility;
};

using Facilities = testing::Types<Logger, Tracer>;
TYPED_TEST_SUITE(FlushThreadStart, Facilities);

TYPED_TEST(FlushThreadStart, HappensOnceThoughTwoThreadsAskAtOnce)
{
    std::future<void> other;
    beforeTheNextThread = [&] {
        other = startUntilItWaits([this] { this->m_facility.Initialize(); });
    };

    this->m_facility.Initialize();
    other.get();

    EXPECT_EQ(startedThreads, 1);
}

TYPED_TEST(FlushThreadStart, ThatFailsLeavesNoLineUnwritten)
{
    startsNoThread = true;

    this->m_facility.Initialize();
    this->m_facility.PrintString("one\n");

    EXPECT_EQ(this->m_folder.read("app_0.txt"), "one\n");
}
