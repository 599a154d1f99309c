#include "FileFinder.h"

#include <exception>
#include <utility>

namespace {

std::string normalised(const std::string& pattern)
{
    if (pattern == "*.*")
        return "*";
    return pattern.starts_with('*') ? pattern : "*" + pattern;
}

// Each folder comes before what is in it.
bool goToNextEntry(FolderTree& tree)
{
    tree.enter();
    while (!tree.next()) {
        if (!tree.leave())
            return false;
    }
    return true;
}

} // namespace

FileFinder::FileFinder(const std::string& directory, const std::string& pattern)
    : FileFinder(directory, pattern, normalised)
{
}

FileFinder::FileFinder(const std::string& directory, const std::string& pattern, PatternForm form)
{
    try {
        m_search.emplace(Search{FolderTree(directory), WildcardPattern(form(pattern))});
    } catch (const std::exception&) {
        // no memory: finds nothing
    }
}

FileFinder::~FileFinder() = default;

bool FileFinder::findFirstFile(std::string& out)
{
    return findMatch(out);
}

bool FileFinder::findNextFile(std::string& out)
{
    return findMatch(out);
}

bool FileFinder::findMatch(std::string& out)
try {
    while (m_search && goToNextEntry(m_search->tree)) {
        std::string path = m_search->tree.path();
        if (m_search->pattern.matches(path)) {
            out = std::move(path);
            return true;
        }
    }
    return false;
} catch (const std::exception&) {
    m_search.reset(); // no memory: ends here
    return false;
}
