#pragma once

#include <chrono>

/// How long the next thread that goes to sleep asks to, in a test that links to tav::asked_sleep.
/// Waits for that thread.
std::chrono::nanoseconds nextAskedSleep();
