#include "FolderTree.h"

#include "Folder.h"

#include <algorithm>
#include <iterator>
#include <ranges>
#include <utility>

FolderTree::FolderTree(const std::string& root) : m_root(root)
{
    addEntries(Folder(AT_FDCWD, root), "");
}

bool FolderTree::next(std::string& path)
{
    if (m_pending.empty())
        return false;
    path = std::move(m_pending.back());
    m_pending.pop_back();
    addEntries(Folder(AT_FDCWD, m_root + "/" + path, O_NOFOLLOW), path + "/");
    return true;
}

void FolderTree::addEntries(const Folder& folder, const std::string& prefix)
{
    const std::vector<std::string> names = folder.names().value_or(std::vector<std::string>());
    std::transform(
        names.rbegin(), names.rend(), std::back_inserter(m_pending),
        [&](const std::string& name) { return prefix + name; });
}
