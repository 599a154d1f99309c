#pragma once

#include "ScopedEnvironment.h"

#include <ctime>
#include <string>

/// Gives the process a time zone for one scope; then the C library goes by the former one again.
class ScopedTimeZone {
public:
    explicit ScopedTimeZone(const std::string& zone) : m_variable("TZ", zone) { tzset(); }
    ~ScopedTimeZone() = default;

    ScopedTimeZone(const ScopedTimeZone&) = delete;
    ScopedTimeZone& operator=(const ScopedTimeZone&) = delete;

private:
    struct Reading {
        ~Reading() { tzset(); }
    };

    Reading m_afterwards; ///< before the variable, so that it ends behind it
    ScopedEnvironment m_variable;
};
