#pragma once

#include <fstream>
#include <sstream>
#include <string>

/// The bytes of a file; empty when there is none.
inline std::string contentOf(const std::string& path)
{
    std::ostringstream content;
    content << std::ifstream(path, std::ios::binary).rdbuf();
    return content.str();
}
