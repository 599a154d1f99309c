#pragma once

#include <ctime>
#include <string>

/// The time stamp in front of a trace or log line, "[hh:mm:ss-mmm]" in local time.
class TimeStamp {
public:
    static std::string now();
    static std::string of(const std::timespec& time);
};
