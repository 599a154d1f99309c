#pragma once

#include "TracerScanner.h"

/// Scans a tracer configuration file. A file that cannot be opened gives a warning on the standard
/// error and scans as an empty one.
class TracerConfigFileScanner : public TracerScanner {
public:
    explicit TracerConfigFileScanner(const char* fileName)
        : TracerScanner(readFile(fileName, "tracer"))
    {
    }
};
