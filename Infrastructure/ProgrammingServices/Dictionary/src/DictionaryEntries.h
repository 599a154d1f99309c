#pragma once

#include "Item.h"

#include <cstddef>
#include <map>
#include <memory>
#include <string>
#include <string_view>

/// The entries of one dictionary: the owned items by key, in the byte order of the keys.
///
/// Each item ends with its entry. Copying and freeing a tree, however deep it is nested, keeps to
/// one level of the call stack.
class DictionaryEntries {
public:
    using Map = std::map<std::string, std::unique_ptr<Item>, std::less<>>;
    using Entry = Map::value_type;
    using const_iterator = Map::const_iterator;

    DictionaryEntries();
    /// A deep copy: dictionaries become dictionaries of the same name, leaves their own clones.
    DictionaryEntries(const DictionaryEntries& other);
    DictionaryEntries& operator=(const DictionaryEntries&) = delete;
    DictionaryEntries(DictionaryEntries&& other) noexcept;
    DictionaryEntries& operator=(DictionaryEntries&& other) noexcept;
    ~DictionaryEntries();

    /// The dictionary that an entry holds; null for a leaf and for an entry that holds nothing.
    static Dictionary* dictionaryIn(const Entry& entry);
    /// A clone of an entry's item.
    static std::unique_ptr<Item> cloneOf(const Entry& entry);

    const_iterator begin() const { return m_map.begin(); }
    const_iterator end() const { return m_map.end(); }
    std::size_t size() const { return m_map.size(); }

    /// The entry under the key; null when there is none.
    const Entry* find(std::string_view key) const;
    /// Puts the item under the key; one that it replaces ends here.
    void store(const std::string& key, std::unique_ptr<Item> item);
    /// Removes an entry and hands back its item.
    std::unique_ptr<Item> take(const Entry& entry);

private:
    // Those who work on whole trees, and the iterator.
    friend class DictionaryDescent;
    friend class DictionaryIterator;
    friend class PairedDescent;
    friend class PropertyListReader;

    static DictionaryEntries& of(Dictionary& dictionary);
    static const DictionaryEntries& of(const Dictionary& dictionary);

    Map m_map;
};
