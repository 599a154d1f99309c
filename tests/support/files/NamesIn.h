#pragma once

#include "TemporaryFolder.h"

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

/// The names of the entries of the folder, sorted.
inline std::vector<std::string> namesIn(const TemporaryFolder& folder)
{
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder.path()))
        names.push_back(entry.path().filename());
    std::sort(names.begin(), names.end());
    return names;
}
