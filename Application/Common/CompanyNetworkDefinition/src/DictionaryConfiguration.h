#pragma once

#include "Dictionary.h"

#include <memory>
#include <string>

/// Typed view of one section of a company network; the base of all sections.
///
/// A section owns a copy of the dictionary it was made from, so neither side sees the other's later
/// changes. Values are texts, booleans the texts "true" and "false". A getter gives "" for an entry
/// that is missing or no text, a setter makes the entry: none fails.
class DictionaryConfiguration {
public:
    /// Copies the dictionary, which stays the caller's.
    explicit DictionaryConfiguration(Dictionary* dictionary);
    DictionaryConfiguration(const DictionaryConfiguration& other);
    virtual ~DictionaryConfiguration();

    /// The dictionary held, the section's own.
    virtual operator Dictionary&();

    /// Takes a copy of the other's dictionary; the one held before is never destroyed. A section
    /// assigned to itself has no entries afterwards.
    DictionaryConfiguration& operator=(const DictionaryConfiguration& other);

    static std::string getDictionaryValue(Dictionary& dictionary, const std::string& key);
    static void setDictionaryValue(
        Dictionary& dictionary, const std::string& key, const std::string& value);

    /// The text of a boolean value.
    static std::string toText(bool value);

    /// Stores a copy of the dictionary held in `parent`, under its own name.
    void storeIn(Dictionary& parent) const;

protected:
    Dictionary& held() const;
    std::string getText(const std::string& key) const;
    void setText(const std::string& key, const std::string& value);
    /// True only for the exact text "true".
    bool isTrue(const std::string& key) const;

private:
    std::unique_ptr<Dictionary> m_dictionary;
};
