#include "DictionaryCursor.h"

#include <iterator>

void DictionaryCursor::enter(const Dictionary& dictionary)
{
    const DictionaryEntries& entries = DictionaryEntries::of(dictionary);
    m_levels.push_back({entries.begin(), entries.end()});
}

const DictionaryEntries::Entry* DictionaryCursor::next()
{
    Level& level = m_levels.back();
    return level.next == level.end ? nullptr : &*level.next++;
}

std::string DictionaryCursor::pathOf(const std::string& name) const
{
    std::string path;
    for (const Level& level : m_levels)
        path.append(std::prev(level.next)->first).append(1, '.');
    return path + name;
}
