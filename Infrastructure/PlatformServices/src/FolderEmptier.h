#pragma once

#include "Folder.h"

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <sys/types.h>

/// Empties a folder tree of any depth: removes regular files, symbolic links and folders, and
/// passes over what it cannot remove.
///
/// It climbs down and up the tree, with three descriptors at most, whatever the depth. A link put
/// in the place of a folder meanwhile is not followed; when the folder that it is in is moved out
/// of the tree meanwhile, it ends there.
class FolderEmptier {
public:
    explicit FolderEmptier(const std::string& path);

    /// Whether there was anything in the folder.
    bool run();

private:
    using Identity = std::optional<std::pair<dev_t, ino_t>>;

    struct Level {
        std::string name; // in the folder above
        Identity identity;
        std::vector<std::string> entries; // still to be removed
    };

    static Identity identityOf(const Folder& folder, const char* name);

    void addLevel(const std::string& name);
    void removeEntry(const std::string& name);
    bool climbDown(const std::string& name);
    bool climbUp();

    Folder m_folder; // the one of the last level
    std::vector<Level> m_levels;
};
