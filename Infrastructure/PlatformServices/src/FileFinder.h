#pragma once

#include "FolderTree.h"
#include "WildcardPattern.h"

#include <optional>
#include <string>

/// Finds the entries of a folder tree whose path relative to the folder matches a pattern: files,
/// folders and links alike. "*" stands for any bytes, "/" included, "?" for one.
///
/// Nothing throws: a folder that cannot be read has no entries, and the search ends where there is
/// no memory for it. Not shared between threads.
class FileFinder {
public:
    /// A pattern that does not begin with "*" gets one in front, so that "txt" finds what ends in
    /// it. Kept: "*.*" finds every entry, also those without a dot.
    FileFinder(const std::string& directory, const std::string& pattern);
    virtual ~FileFinder();

    FileFinder(const FileFinder&) = delete;
    FileFinder& operator=(const FileFinder&) = delete;

    /// Puts the relative path of the next match into `out`; false when there is none left, `out`
    /// unchanged. Kept: goes on where the last call ended and never starts again.
    virtual bool findFirstFile(std::string& out);
    /// The same as findFirstFile().
    virtual bool findNextFile(std::string& out);

protected:
    /// What becomes of a pattern before it is matched.
    using PatternForm = std::string (*)(const std::string&);

    FileFinder(const std::string& directory, const std::string& pattern, PatternForm form);

    bool findMatch(std::string& out);

private:
    struct Search {
        FolderTree tree;
        WildcardPattern pattern;
    };

    std::optional<Search> m_search; // ends where there is no memory for it
};
