#pragma once

#include "ConfigScanner.h"

#include <utility>

/// Scans the bytes of a tracer configuration file.
class TracerScanner : public ConfigScanner {
public:
    explicit TracerScanner(std::string content) : ConfigScanner(std::move(content), "TRACE_") {}
};
