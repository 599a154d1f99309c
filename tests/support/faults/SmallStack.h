#pragma once

#include <cstddef>
#include <functional>
#include <stdexcept>

#include <pthread.h>

/// Runs the function on a thread with a call stack of a quarter of a megabyte, and waits for it: a
/// recursion that goes deep does not come back.
inline void runOnSmallStack(std::function<void()> function)
{
    constexpr std::size_t s_stackSize = std::size_t{256} * 1024;
    const auto run = [](void* argument) -> void* {
        (*static_cast<std::function<void()>*>(argument))();
        return nullptr;
    };
    pthread_attr_t attributes;
    pthread_t thread{};
    pthread_attr_init(&attributes);
    const bool started = pthread_attr_setstacksize(&attributes, s_stackSize) == 0 &&
                         pthread_create(&thread, &attributes, run, &function) == 0;
    pthread_attr_destroy(&attributes);
    if (!started)
        throw std::runtime_error("cannot start a thread with a small stack");
    pthread_join(thread, nullptr);
}
