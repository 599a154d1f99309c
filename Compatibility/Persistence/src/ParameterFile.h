#pragma once

#include <string>
#include <string_view>

/// What the stores of texts and of bytes do with their file.
namespace ParameterFile {

/// Replaces the content safely; false, with the old content in place and the reason in the log,
/// when that fails.
bool replace(const std::string& path, std::string_view content);

} // namespace ParameterFile
