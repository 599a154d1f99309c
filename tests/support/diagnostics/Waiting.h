#pragma once

#include <chrono>
#include <functional>
#include <thread>

#include <gtest/gtest.h>

/// Asks again and again; false when the condition does not hold within a minute.
inline bool holdsInTime(const std::function<bool()>& condition)
{
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::minutes(1);
    while (!condition()) {
        if (std::chrono::steady_clock::now() > deadline)
            return false;
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    return true;
}

/// Waits until the background thread of a tracer or a logger has written all to its files.
template<typename Facility>
void waitUntilWritten(Facility& facility)
{
    ASSERT_TRUE(holdsInTime([&facility] { return facility.areAllMsgFlushed(); }));
}
