#pragma once

#include "t_PersistenceMode.h"

#include <optional>
#include <string>
#include <string_view>

/// What the stores of texts and of bytes do with their file.
namespace ParameterFile {

/// The content that a change starts from: empty when the file is missing. Nothing, with the reason
/// in the log, when there is a file that cannot be read, whose parameters the change would lose.
std::optional<std::string> read(const std::string& path);

/// Replaces the content safely, in a folder that is made again when it is gone; false, with the old
/// content in place and the reason in the log, when that fails.
bool replace(const std::string& path, t_PersistenceMode mode, std::string_view content);

} // namespace ParameterFile
