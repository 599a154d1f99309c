#pragma once

#include "FileDescriptor.h"

#include <optional>

/// A pipe of which no started program inherits an end unasked.
struct Pipe {
    FileDescriptor readEnd;
    FileDescriptor writeEnd;

    /// Nothing when the system refuses; errno says why.
    static std::optional<Pipe> open();
};
