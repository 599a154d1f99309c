#pragma once

#include "DictionaryEntries.h"
#include "Item.h"

#include <list>
#include <memory>
#include <sstream>
#include <string>

class CallMarker;

/// The inner node of a property tree: named items, sorted by the bytes of their keys.
///
/// A dictionary owns its items: they end when they are replaced or removed, and with it. A path is
/// a row of keys joined by "."; it splits at its first full stop, without any escaping. A miss is
/// never a failure: lookups answer null, false or nothing, updates do nothing. What an operation is
/// given may be part of the tree that it changes. One thread uses a tree at a time; no operation
/// uses the call stack in proportion to the depth of a tree.
class Dictionary : public Item {
public:
    /// An empty dictionary named "root".
    Dictionary();
    explicit Dictionary(const std::string& name);
    /// A deep copy.
    Dictionary(const Dictionary& other);
    /// Empties this dictionary, then copies the name and, deeply, the items.
    /// Kept: without a guard, so that `d = d` empties d.
    Dictionary& operator=(const Dictionary& other);

    using Item::getValue;
    using Item::getValueAs;

    /// Equal to a dictionary of equal items under the same keys; its own name does not count.
    bool equals(const Item& other) override;
    Item* clone() override;
    ~Dictionary() override;
    /// The first text that the path leads to, from here or else from the dictionaries below, depth
    /// first and in key order; null when there is none.
    /// Kept: where the path leads to an item that is no text, nothing below is searched.
    const char* findValue(const std::string& path) const override;
    Dictionary* getAsDictionary() override;
    const char* getValue(const std::string& path) const override;
    bool getValueAs(const std::string& path, int& out) const override;
    /// Kept: for a path of several keys, true when the first one exists and any dictionary here,
    /// not only the one under it, contains the rest.
    bool contains(const std::string& path) override;
    Item* getItem(const std::string& path) const override;
    /// Null is a violation of the contract.
    Item* getItem(const char* cpath) const override;
    /// The lines of a property list. Throws std::length_error for a tree nested too deep to be
    /// written (see PropertyListWriter::MAX_MARKUP_SIZE).
    std::string marshall(const std::string& indent) override;
    /// Cut behind DictionaryDescription::MAX_SIZE bytes.
    std::string toString(const std::string& indent) override;
    /// Adds the dictionary that stands next in the stream, see PropertyListReader; never throws for
    /// the sake of what it reads.
    void unMarshall(std::stringstream& in) override;

    // The slots that a dictionary adds, in their fixed order.

    /// Whether the key is a direct entry; it is not split.
    virtual bool hasKey(const std::string& key) const;
#pragma GCC diagnostic push
    // Hides the operation of Item, on purpose: through an Item the answer stays the empty list.
#pragma GCC diagnostic ignored "-Woverloaded-virtual"
    /// The texts of all items that findItems() finds and that are texts.
    virtual std::list<const char*> findValues(const std::string& path) const;
#pragma GCC diagnostic pop
    /// The first item that the path leads to, from here or else from the dictionaries below, depth
    /// first and in key order; null when there is none.
    virtual Item* findItem(const std::string& path);
    /// All items that the path leads to; the search does not go below a dictionary that has one.
    virtual std::list<Item*> findItems(const std::string& path);
    /// Whether getItemPath() finds the item.
    virtual bool contains(Item& item);
    /// The path of the first item with the name of this one and equal to it, not only of the very
    /// object; empty when there is none.
    virtual std::string getItemPath(Item& item);

    void clear();
    /// As clear().
    void removeAllItems();
    /// Removes every item of this name and equal to this one, throughout the tree.
    void removeAllItems(Item& item);
    void removeItem(const std::string& path);
    /// Removes the direct entry of this item's name when it is equal to it; when it is the very
    /// item, that item ends here.
    void removeItem(Item& item);
    /// Whether there was something to remove.
    bool doRemoveItem(const std::string& path);

    /// The item of the smallest key; null when empty.
    Item* getFirstItem();

    /// Stores a clone, which keeps its own name, in place of what stands there. Dictionaries that
    /// the path lacks are made; a leaf on the way stays, and nothing is stored.
    void setItem(const std::string& path, Item& item);
    /// Stores a new item, named by the path's last key.
    void addValue(const std::string& path, const std::string& value);
    void addValue(const std::string& path, int value);
    /// Stores clones of the source's items in the dictionary that the path leads to; does nothing
    /// when there is none.
    void addDictionary(const std::string& path, Dictionary& source);
    /// Adds clones of what this tree lacks; replaces nothing.
    void mergeDictionary(Dictionary& other);

    /// Adds the content of a property list file to this dictionary, see unMarshall().
    ///
    /// Throws KFDictionaryFileException when the file cannot be read and
    /// KFDictionaryParsingException for a wrong header; the dictionary is then untouched.
    void loadFromFile(const std::string& path);
    /// Writes a property list file; the replaced one stays beside it with ".bak" behind its name.
    /// A failure leaves the file as it was and is told to the log alone.
    void saveToFile(const std::string& path);

    /// Appends what findItems() answers.
    void doFindItems(const std::string& path, std::list<Item*>& found);
    /// Appends what findValues() answers.
    void doFindValues(const std::string& path, std::list<const char*>& found) const;
    /// As getItemPath(), with the prefix and a full stop in front of a path that is found.
    std::string doGetItemPath(Item& item, const std::string& prefix);

private:
    friend class DictionaryEntries;

    Dictionary* getOrAddDictionary(const std::string& key, const CallMarker& marker);
    const DictionaryEntries::Entry* findEqual(Item& item) const;
    std::unique_ptr<Item> takeEqual(Item& item);

    DictionaryEntries m_entries;
};
