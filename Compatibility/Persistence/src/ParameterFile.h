#pragma once

#include "t_PersistenceMode.h"

#include <string>
#include <string_view>

/// What the stores of texts and of bytes do with their file.
namespace ParameterFile {

/// Logs why the parameters cannot be read that a change starts from, and would lose.
void logUnreadable(const std::string& path, const std::string& reason);

/// Replaces the content safely, in a folder that is made again when it is gone; false, with the old
/// content in place and the reason in the log, when that fails.
bool replace(const std::string& path, t_PersistenceMode mode, std::string_view content);

} // namespace ParameterFile
