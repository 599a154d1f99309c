#include "KFThread.h"

#include <gtest/gtest.h>
#include <pthread.h>

// The linker sends these calls here, which see what a thread is created from.
namespace {

const pthread_attr_t* initialisedAttributes = nullptr;
const pthread_attr_t* usedAttributes = nullptr;
bool wasRunningAtItsCreation = false;

class IdleThread : public KFThread {
public:
    IdleThread() : KFThread("idle") {}
    void run() override {}
};

} // namespace

extern "C" {
// NOLINTBEGIN(bugprone-reserved-identifier): the names that the linker's --wrap gives
int __real_pthread_attr_init(pthread_attr_t* attributes);
int __real_pthread_create(
    pthread_t* thread, const pthread_attr_t* attributes, void* (*entry)(void*), void* argument);

int __wrap_pthread_attr_init(pthread_attr_t* attributes)
{
    // The first ones: a sanitizer asks for some of its own later.
    if (initialisedAttributes == nullptr)
        initialisedAttributes = attributes;
    return __real_pthread_attr_init(attributes);
}

int __wrap_pthread_create(
    pthread_t* thread, const pthread_attr_t* attributes, void* (*entry)(void*), void* argument)
{
    usedAttributes = attributes;
    wasRunningAtItsCreation = static_cast<const KFThread*>(argument)->isRunning();
    return __real_pthread_create(thread, attributes, entry, argument);
}
// NOLINTEND(bugprone-reserved-identifier)
}

TEST(KFThreadCreation, UsesTheAttributesOfTheThread)
{
    initialisedAttributes = nullptr;
    IdleThread thread;

    thread.start();
    thread.stop();

    EXPECT_NE(usedAttributes, nullptr);
    EXPECT_EQ(usedAttributes, initialisedAttributes);
}

TEST(KFThreadCreation, FindsTheThreadRunning)
{
    IdleThread thread;

    thread.start();
    thread.stop();

    EXPECT_TRUE(wasRunningAtItsCreation);
}
