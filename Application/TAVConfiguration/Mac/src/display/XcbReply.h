#pragma once

#include <cstdlib>
#include <memory>

/// Gives back the memory of what xcb hands out.
struct XcbFree {
    void operator()(void* memory) const
    {
        std::free(memory); // NOLINT(cppcoreguidelines-no-malloc): xcb allocates so
    }
};

/// What an X server answered; null where it refused or is gone.
template<typename T>
using XcbReply = std::unique_ptr<T, XcbFree>;
