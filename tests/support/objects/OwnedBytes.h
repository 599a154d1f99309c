#pragma once

#include <memory>

/// Bytes that are handed out to be released with delete[].
using OwnedBytes = std::unique_ptr<char[]>; // NOLINT(modernize-avoid-c-arrays): as handed out
