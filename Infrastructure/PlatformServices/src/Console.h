#pragma once

#include <string_view>

/// Writes to the process's standard output and standard error, unbuffered.
///
/// A stream that nobody reads any more does not end the process: the text is dropped, and the
/// SIGPIPE that its writing raises is taken back before the call returns. A stream that is full is
/// waited for. Any thread may call it.
class Console {
public:
    /// Writes the text and an end of line to the standard output.
    static void writeLine(std::string_view text);
    /// Writes the text as it is to the standard error.
    static void writeError(std::string_view text);
};
