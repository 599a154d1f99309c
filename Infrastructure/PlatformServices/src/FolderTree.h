#pragma once

#include <string>
#include <vector>

class Folder;

/// Walks a folder tree: all levels, each folder before what is in it, names in byte order. Links
/// below the root are entries and are not followed; a folder that cannot be read has no entries.
///
/// A folder is read when the walk comes to it, so that no more than one is open at a time.
class FolderTree {
public:
    explicit FolderTree(const std::string& root);

    /// Puts the next entry's path relative to the root into `path`; false at the end.
    bool next(std::string& path);

private:
    void addEntries(const Folder& folder, const std::string& prefix);

    std::string m_root;
    // The entries still to come, the next one last.
    std::vector<std::string> m_pending;
};
