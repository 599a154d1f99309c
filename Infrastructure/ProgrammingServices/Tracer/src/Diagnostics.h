#pragma once

/// What concerns the tracer and the logger together.
namespace Diagnostics {

/// Writes the pending lines of both before the process ends; takes a few seconds at most and gives
/// up on lines whose file cannot be opened. Nothing when neither is published.
void drain();

} // namespace Diagnostics
