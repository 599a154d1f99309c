#include "ProgramPath.h"

#include "CallMarker.h"
#include "FileSystemManagement.h"

#include <cstdlib>
#include <filesystem>
#include <sstream>

#include <unistd.h>

namespace {

namespace fs = std::filesystem;

/// Empty when the path leads to no program.
std::string resolvedProgram(const fs::path& path)
{
    CallMarker marker("resolvedProgram");
    std::error_code error;
    const fs::path resolved = fs::canonical(path, error);
    const bool isProgram =
        !error && fs::is_regular_file(resolved, error) && access(resolved.c_str(), X_OK) == 0;
    return isProgram ? resolved.string() : std::string();
}

std::string findInPath(const std::string& name)
{
    CallMarker marker("findInPath");
    const char* path = std::getenv("PATH");
    std::istringstream folders(path != nullptr ? path : "");
    std::string folder;
    std::string found;
    while (found.empty() && std::getline(folders, folder, ':'))
        found = resolvedProgram(fs::path(folder.empty() ? "." : folder) / name);
    return found;
}

} // namespace

std::string ProgramPath::resolve(const std::string& firstArgument)
{
    CallMarker marker("ProgramPath::resolve");
    const bool isPath = firstArgument.find('/') != std::string::npos;
    const std::string program = isPath ? resolvedProgram(firstArgument) : findInPath(firstArgument);
    return program.empty() ? FileSystemManagement::getCurrentExecutableFullPath() : program;
}
