#include "DictionaryEntries.h"

#include "Dictionary.h"

#include <utility>
#include <vector>

DictionaryEntries::DictionaryEntries() = default;

DictionaryEntries::DictionaryEntries(const DictionaryEntries& other)
{
    std::vector<std::pair<const Map*, Map*>> pending{{&other.m_map, &m_map}};
    while (!pending.empty()) {
        const auto [source, target] = pending.back();
        pending.pop_back();
        for (const Entry& entry : *source) {
            Dictionary* const child = dictionaryIn(entry);
            if (child == nullptr) {
                target->emplace_hint(target->end(), entry.first, cloneOf(entry));
                continue;
            }
            auto copy = std::make_unique<Dictionary>(child->getName());
            pending.emplace_back(&of(*child).m_map, &of(*copy).m_map);
            target->emplace_hint(target->end(), entry.first, std::move(copy));
        }
    }
}

DictionaryEntries::DictionaryEntries(DictionaryEntries&& other) noexcept = default;

DictionaryEntries& DictionaryEntries::operator=(DictionaryEntries&& other) noexcept = default;

// Moves the entries of every inner dictionary up before it ends, so that each ends empty. Nodes
// change hands as they are: nothing is allocated and nothing can fail.
DictionaryEntries::~DictionaryEntries()
{
    std::multimap<std::string, std::unique_ptr<Item>, std::less<>> pending;
    const auto takeChildren = [&pending](const std::unique_ptr<Item>& item) {
        // What an item only answers as its dictionary may belong to somebody else.
        if (auto* const child = dynamic_cast<Dictionary*>(item.get()))
            pending.merge(of(*child).m_map);
    };
    for (const Entry& entry : m_map)
        takeChildren(entry.second);
    while (!pending.empty()) {
        const auto node = pending.extract(pending.begin());
        takeChildren(node.mapped());
    }
}

DictionaryEntries& DictionaryEntries::of(Dictionary& dictionary)
{
    return dictionary.m_entries;
}

const DictionaryEntries& DictionaryEntries::of(const Dictionary& dictionary)
{
    return dictionary.m_entries;
}

Dictionary* DictionaryEntries::dictionaryIn(const Entry& entry)
{
    return entry.second == nullptr ? nullptr : entry.second->getAsDictionary();
}

std::unique_ptr<Item> DictionaryEntries::cloneOf(const Entry& entry)
{
    return std::unique_ptr<Item>(entry.second == nullptr ? nullptr : entry.second->clone());
}

const DictionaryEntries::Entry* DictionaryEntries::find(std::string_view key) const
{
    const auto found = m_map.find(key);
    return found == m_map.end() ? nullptr : &*found;
}

void DictionaryEntries::store(const std::string& key, std::unique_ptr<Item> item)
{
    m_map.insert_or_assign(key, std::move(item));
}

std::unique_ptr<Item> DictionaryEntries::take(const Entry& entry)
{
    return std::move(m_map.extract(m_map.find(entry.first)).mapped());
}
