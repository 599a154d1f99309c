#pragma once

#include "Folder.h"

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <sys/types.h>

/// A place in a folder tree: goes from entry to entry of one folder, in byte order of their names,
/// down into a folder and back up, however deep the tree is, with three descriptors at most.
///
/// Links below the root are entries and are not followed. A folder that is moved out of the tree
/// while the walk is in it is the last one: there is no way back. Throws std::bad_alloc alone, and
/// is of no use then. Not shared between threads.
class FolderTree {
public:
    /// Before the first entry of the root, which has none when it cannot be read.
    explicit FolderTree(const std::string& root);

    /// Goes to the next entry of the folder; false behind the last one.
    bool next();
    /// Goes down, before the first entry of the folder that it is at. False, and where it was, when
    /// that is no folder, cannot be read, or leads back to another one than it was reached from.
    bool enter();
    /// Goes up, to the entry whose folder it was in. False in the root and without a way back.
    bool leave();

    /// The open folder that it is in.
    int folder() const { return m_levels.back().folder.descriptor(); }
    /// The entry that it is at: its name in that folder, empty before the first entry and behind
    /// the last one.
    const std::string& name() const { return m_name; }
    /// The same relative to the root.
    std::string path() const;

private:
    using Identity = std::optional<std::pair<dev_t, ino_t>>;

    struct Level {
        Folder folder;    // closed while the walk is further down and ".." leads back
        std::string name; // in the folder above
        std::vector<std::string> entries; // still to come, the next one last
        Identity identity;
    };

    static Identity identityOf(const Folder& folder);
    static Identity identityAbove(const Folder& folder);

    void addLevel(Folder folder, std::vector<std::string> names);

    std::vector<Level> m_levels;
    std::string m_name;
};
