#pragma once

#include <cstdio>
#include <cstdlib>

/// Ends the run of a fuzz target at a property that does not hold.
inline void require(bool holds, const char* what)
{
    if (holds)
        return;
    std::fprintf(stderr, "does not hold: %s\n", what);
    std::abort();
}
