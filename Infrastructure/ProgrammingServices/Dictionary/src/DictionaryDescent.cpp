#include "DictionaryDescent.h"

#include <iterator>

void DictionaryDescent::enter(const Dictionary& dictionary)
{
    const DictionaryEntries& entries = DictionaryEntries::of(dictionary);
    m_levels.enter(&dictionary, {&entries, entries.begin()});
}

const DictionaryEntries::Entry* DictionaryDescent::next()
{
    Level& level = m_levels.here();
    return level.next == level.entries->end() ? nullptr : &*level.next++;
}

std::string DictionaryDescent::pathOf(const std::string& name) const
{
    std::string path;
    for (const Level& level : m_levels.above())
        path.append(std::prev(level.next)->first).append(1, '.');
    return path + name;
}
