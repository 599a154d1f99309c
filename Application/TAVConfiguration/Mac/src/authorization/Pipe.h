#pragma once

#include "FileDescriptor.h"

/// A pipe of which no started program inherits an end unasked; closed until open() has succeeded.
struct Pipe {
    FileDescriptor readEnd{-1};
    FileDescriptor writeEnd{-1};

    /// Returns 0, or the system's error.
    int open();
};
