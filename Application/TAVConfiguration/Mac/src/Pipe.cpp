#include "Pipe.h"

#include "CallMarker.h"

#include <array>

#include <fcntl.h>

std::optional<Pipe> Pipe::open()
{
    CallMarker marker("Pipe::open");
    std::array<int, 2> ends{};
    if (pipe2(ends.data(), O_CLOEXEC) != 0)
        return std::nullopt;
    return Pipe{FileDescriptor(ends[0]), FileDescriptor(ends[1])};
}
