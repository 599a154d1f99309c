#pragma once

#include "DictionaryEntries.h"

#include <string>

/// Walks the direct entries of one dictionary in key order, without going into them.
///
///     for (DictionaryIterator it(dictionary); !it.atEnd(); it.next())
///
/// or, over the entries that are dictionaries themselves:
///
///     DictionaryIterator it(dictionary);
///     for (it.firstDictionary(); !it.atEnd(); it.nextDictionary())
///
/// It owns nothing: the dictionary must outlive it, without entries added or removed meanwhile.
class DictionaryIterator {
public:
    /// Stands on the entry of the smallest key; at the end when there is none.
    explicit DictionaryIterator(Dictionary& dictionary);
    virtual ~DictionaryIterator();

    DictionaryIterator(const DictionaryIterator&) = delete;
    DictionaryIterator& operator=(const DictionaryIterator&) = delete;

    bool atEnd();
    /// Does nothing at the end.
    DictionaryIterator& next();
    /// Null at the end.
    Item* current();
    /// Empty at the end.
    std::string key();
    /// The text of the current item; null when it is none, and at the end.
    const char* value();
    /// The integer of the current item; false, with `out` left alone, when it is none, and at the
    /// end.
    bool getValueAs(int& out);
    /// Null when the current item is no dictionary, and at the end.
    Dictionary* currentDictionary();
    /// Goes on to the next entry that is a dictionary, unless it stands on one; it does not rewind.
    DictionaryIterator& firstDictionary();
    /// Goes on at least one entry, to the next that is a dictionary or to the end.
    DictionaryIterator& nextDictionary();

private:
    const DictionaryEntries* m_entries;
    DictionaryEntries::const_iterator m_position;
};
