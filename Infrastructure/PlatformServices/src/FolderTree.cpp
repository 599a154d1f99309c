#include "FolderTree.h"

#include <algorithm>

#include <fcntl.h>
#include <sys/stat.h>

FolderTree::FolderTree(const std::string& root)
{
    Folder folder(AT_FDCWD, root);
    std::vector<std::string> names = folder.names().value_or(std::vector<std::string>());
    addLevel(std::move(folder), std::move(names));
}

bool FolderTree::next()
{
    m_name.clear();
    std::vector<std::string>& entries = m_levels.back().entries;
    if (entries.empty())
        return false;
    m_name.swap(entries.back());
    entries.pop_back();
    return true;
}

// A folder that may be read and not searched tells neither of what is in it nor of the way up: the
// one above stays open meanwhile.
bool FolderTree::enter()
{
    Folder inner(folder(), m_name, O_NOFOLLOW);
    std::optional<std::vector<std::string>> names = inner.names();
    const Identity above = identityAbove(inner);
    if (!names || (above && above != m_levels.back().identity))
        return false;
    addLevel(std::move(inner), *std::move(names));
    if (above)
        m_levels[m_levels.size() - 2].folder.close();
    m_name.clear();
    return true;
}

bool FolderTree::leave()
{
    if (m_levels.size() == 1)
        return false;
    Level& above = m_levels[m_levels.size() - 2];
    if (!above.folder.isOpen()) {
        Folder reopened(folder(), "..");
        if (identityOf(reopened) != above.identity)
            return false;
        above.folder = std::move(reopened);
    }
    m_name.swap(m_levels.back().name);
    m_levels.pop_back();
    return true;
}

std::string FolderTree::path() const
{
    std::string path;
    for (std::size_t depth = 1; depth < m_levels.size(); ++depth)
        path.append(m_levels[depth].name).append("/");
    return path.append(m_name);
}

FolderTree::Identity FolderTree::identityOf(const Folder& folder)
{
    struct stat status {};
    if (fstat(folder.descriptor(), &status) != 0)
        return std::nullopt;
    return std::pair(status.st_dev, status.st_ino);
}

// Nothing for a folder that may not be searched.
FolderTree::Identity FolderTree::identityAbove(const Folder& folder)
{
    struct stat status {};
    if (fstatat(folder.descriptor(), "..", &status, 0) != 0)
        return std::nullopt;
    return std::pair(status.st_dev, status.st_ino);
}

void FolderTree::addLevel(Folder folder, std::vector<std::string> names)
{
    std::reverse(names.begin(), names.end());
    const Identity identity = identityOf(folder);
    m_levels.push_back({std::move(folder), m_name, std::move(names), identity});
}
