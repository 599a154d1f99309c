#include "Pipe.h"

#include "CallMarker.h"

#include <array>
#include <cerrno>

#include <fcntl.h>

int Pipe::open()
{
    CallMarker marker("Pipe::open", this);
    std::array<int, 2> ends{};
    if (pipe2(ends.data(), O_CLOEXEC) != 0)
        return errno;
    readEnd = FileDescriptor(ends[0]);
    writeEnd = FileDescriptor(ends[1]);
    return 0;
}
