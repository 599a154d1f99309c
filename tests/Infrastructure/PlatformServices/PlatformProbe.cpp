// Prints where the process that runs it finds its files, one "name=path" a line.

#include "FileSystemManagement.h"

#include <cstdio>
#include <cstdlib>
#include <string>

namespace {

void print(const char* name, const std::string& value)
{
    std::printf("%s=%s\n", name, value.c_str());
}

} // namespace

int main()
{
    print("path", FileSystemManagement::getCurrentExecutableFullPath());
    print("name", FileSystemManagement::getCurrentExecutableName());
    print("directory", FileSystemManagement::getCurrentExecutableDirectory());
    print("output", FileSystemManagement::getCurrentOutputDirectory());
    print("common", FileSystemManagement::getCommonAppDataDirectory());
    std::fflush(stdout);
    // A process with more rights than its user's cannot look for its own leaks.
    std::_Exit(EXIT_SUCCESS);
}
