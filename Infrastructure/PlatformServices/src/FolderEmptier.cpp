#include "FolderEmptier.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

FolderEmptier::FolderEmptier(const std::string& path) : m_folder(AT_FDCWD, path)
{
    addLevel(path);
}

bool FolderEmptier::run()
{
    const bool hadEntries = !m_levels.back().entries.empty();
    do {
        while (!m_levels.back().entries.empty()) {
            const std::string name = m_levels.back().entries.back();
            m_levels.back().entries.pop_back();
            removeEntry(name);
        }
    } while (m_levels.size() > 1 && climbUp());
    return hadEntries;
}

// Nothing for a folder that may not be searched.
FolderEmptier::Identity FolderEmptier::identityOf(const Folder& folder, const char* name)
{
    struct stat status {};
    if (fstatat(folder.descriptor(), name, &status, AT_SYMLINK_NOFOLLOW) != 0)
        return std::nullopt;
    return std::pair(status.st_dev, status.st_ino);
}

void FolderEmptier::addLevel(const std::string& name)
{
    m_levels.push_back(
        {name, identityOf(m_folder, "."), m_folder.names().value_or(std::vector<std::string>())});
}

void FolderEmptier::removeEntry(const std::string& name)
{
    struct stat status {};
    if (fstatat(m_folder.descriptor(), name.c_str(), &status, AT_SYMLINK_NOFOLLOW) != 0)
        return;
    if (S_ISDIR(status.st_mode)) {
        if (!climbDown(name))
            unlinkat(m_folder.descriptor(), name.c_str(), AT_REMOVEDIR);
    } else if (S_ISREG(status.st_mode) || S_ISLNK(status.st_mode)) {
        unlinkat(m_folder.descriptor(), name.c_str(), 0);
    }
}

// Goes only where it can come back from: nothing could be removed in another folder anyway.
bool FolderEmptier::climbDown(const std::string& name)
{
    Folder inner(m_folder.descriptor(), name, O_NOFOLLOW);
    const Identity above = identityOf(inner, "..");
    if (!above || above != m_levels.back().identity)
        return false;
    m_folder = std::move(inner);
    addLevel(name);
    return true;
}

bool FolderEmptier::climbUp()
{
    const std::string emptied = m_levels.back().name;
    m_levels.pop_back();
    Folder above(m_folder.descriptor(), "..");
    const Identity identity = identityOf(above, ".");
    if (!identity || identity != m_levels.back().identity)
        return false;
    m_folder = std::move(above);
    unlinkat(m_folder.descriptor(), emptied.c_str(), AT_REMOVEDIR);
    return true;
}
