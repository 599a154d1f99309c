#pragma once

#include "FileFinder.h"

/// A FileFinder that takes its pattern as it is given: "*.*" finds only entries with a dot in
/// their relative path, "txt" only an entry of that name.
class PatternFileFinder : public FileFinder {
public:
    PatternFileFinder(const std::string& directory, const std::string& pattern);

    bool findFirstFile(std::string& out) override;
    bool findNextFile(std::string& out) override;
};
