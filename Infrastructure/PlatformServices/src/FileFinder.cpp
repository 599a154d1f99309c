#include "FileFinder.h"

#include <utility>

namespace {

WildcardPattern normalised(const std::string& pattern)
{
    if (pattern == "*.*")
        return WildcardPattern("*");
    return WildcardPattern(pattern.starts_with('*') ? pattern : "*" + pattern);
}

} // namespace

FileFinder::FileFinder(const std::string& directory, const std::string& pattern)
    : FileFinder(directory, normalised(pattern))
{
}

FileFinder::FileFinder(const std::string& directory, WildcardPattern pattern)
    : m_tree(directory), m_pattern(std::move(pattern))
{
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
{
    std::string path;
    while (m_tree.next(path)) {
        if (m_pattern.matches(path)) {
            out = path;
            return true;
        }
    }
    return false;
}
