#pragma once

/// What concerns the tracer and the logger together.
namespace Diagnostics {

/// Writes the pending lines of both; takes a few seconds at most and gives up on lines whose file
/// cannot be opened. Nothing when neither is published.
void drain();

/// Drains once when the process exits, however often this is called.
void drainAtExit();

/// Ends the process with status 1, after a message on standard output and a drain.
[[noreturn]] void endProcess(const char* message);

} // namespace Diagnostics
