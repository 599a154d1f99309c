#include "Dictionary.h"

#include "BasicItem.h"
#include "CallMarker.h"
#include "Contract.h"
#include "DictionaryComparison.h"
#include "DictionaryDescription.h"
#include "DictionaryMerge.h"
#include "DictionaryWalk.h"
#include "IntBasicItem.h"
#include "NestedCalls.h"
#include "PathKeys.h"
#include "PropertyListFile.h"
#include "PropertyListReader.h"
#include "PropertyListWriter.h"
#include "TracedAddress.h"

#include <memory>
#include <utility>
#include <vector>

namespace {

using Entry = DictionaryEntries::Entry;

constexpr const char* UNIT = "Infrastructure/ProgrammingServices/Dictionary/src/Dictionary";

void traceMiss(const CallMarker& marker, const PathKeys& keys)
{
    if (keys.isLast())
        TAV_TRACE(marker, TraceMsgType::D, "Key %s not found", std::string(keys.head()).c_str());
    else
        TAV_TRACE(
            marker, TraceMsgType::D, "Head key %s not found", std::string(keys.head()).c_str());
}

Item* lookFor(const std::string& path, const Dictionary& here, const CallMarker& marker)
{
    TAV_TRACE(marker, TraceMsgType::D, "looking for %s", path.c_str());
    Item* const item = here.getItem(path);
    if (item == nullptr)
        TAV_TRACE(marker, TraceMsgType::D, "item not found looking in children");
    else
        TAV_TRACE(marker, TraceMsgType::D, "item found %s", item->toString("").c_str());
    return item;
}

std::string lastKey(const std::string& path)
{
    return path.substr(path.rfind('.') + 1);
}

} // namespace

Dictionary::Dictionary() : Dictionary("root") {}

Dictionary::Dictionary(const std::string& name) : Item(name)
{
    CallMarker marker("Dictionary", "Dictionary::constructor", true, this);
}

Dictionary::Dictionary(const Dictionary& other) : Item(other), m_entries(other.m_entries)
{
    CallMarker marker("Dictionary", "Dictionary::constructor", true, this);
}

Dictionary& Dictionary::operator=(const Dictionary& other)
{
    CallMarker marker("Dictionary& Dictionary::operator=(const Dictionary&)", this);

    // Emptied first, but not freed before the copy is made: `other` may be one of these entries.
    const DictionaryEntries previous = std::exchange(m_entries, DictionaryEntries());
    Item::operator=(other);
    m_entries = DictionaryEntries(other.m_entries);
    return *this;
}

bool Dictionary::equals(const Item& other)
{
    CallMarker marker("bool Dictionary::equals(const Item&)", this);

    return DictionaryComparison(marker).run(*this, other);
}

Item* Dictionary::clone()
{
    CallMarker marker("Item* Dictionary::clone()", this);

    return std::make_unique<Dictionary>(*this).release();
}

Dictionary::~Dictionary()
{
    CallMarker marker("Dictionary", "Dictionary::destructor", false, this);
}

const char* Dictionary::findValue(const std::string& path) const
{
    CallMarker marker("const char* Dictionary::findValue(const std::string&) const", this);

    DictionaryWalk walk(*this, marker, DictionaryWalk::Leaves::told);
    for (const Dictionary* here = this; here != nullptr;) {
        const Item* const item = lookFor(path, *here, marker);
        if (const char* const value = item == nullptr ? nullptr : item->getValue())
            return value;
        here = item == nullptr ? walk.next() : walk.nextBeside();
    }
    return nullptr;
}

Dictionary* Dictionary::getAsDictionary()
{
    CallMarker marker("Dictionary* Dictionary::getAsDictionary()", this);

    return this;
}

const char* Dictionary::getValue(const std::string& path) const
{
    CallMarker marker("const char* Dictionary::getValue(const std::string&) const", this);

    const Item* const item = getItem(path);
    return item == nullptr ? nullptr : item->getValue();
}

bool Dictionary::getValueAs(const std::string& path, int& out) const
{
    CallMarker marker("bool Dictionary::getValueAs(const std::string&, int&) const", this);

    const Item* const item = getItem(path);
    return item != nullptr && item->getValueAs(out);
}

bool Dictionary::contains(const std::string& path)
{
    CallMarker marker("bool Dictionary::contains(const std::string&)", this);

    // What is left of the path at each depth of the walk.
    std::vector<PathKeys> rests{PathKeys(path)};
    DictionaryWalk walk(*this, marker);
    for (Dictionary* here = this; here != nullptr;) {
        const PathKeys rest = rests[walk.depth()];
        const bool hasHead = here->m_entries.find(rest.head()) != nullptr;
        if (hasHead && rest.isLast())
            return true;
        if (hasHead && rests.size() == walk.depth() + 1)
            rests.emplace_back(rest).next();
        here = hasHead ? walk.next() : walk.nextBeside();
    }
    return false;
}

Item* Dictionary::getItem(const std::string& path) const
{
    CallMarker marker("Item* Dictionary::getItem(const std::string&) const", this);

    NestedCalls calls(&marker);
    const Dictionary* here = this;
    for (PathKeys keys(path);; keys.next()) {
        TAV_TRACE(
            marker, TraceMsgType::D, "getting on [%x] %s path %s", tracedAddress(here),
            here->getName().c_str(), std::string(keys.rest()).c_str());
        const Entry* const entry = here->m_entries.find(keys.head());
        if (entry == nullptr) {
            traceMiss(marker, keys);
            return nullptr;
        }
        if (keys.isLast())
            return entry->second.get();
        here = DictionaryEntries::dictionaryIn(*entry);
        if (here == nullptr) {
            TAV_TRACE(
                marker, TraceMsgType::D, "Child with key %s is not a dictionary",
                std::string(keys.head()).c_str());
            return nullptr;
        }
        calls.enter(here);
    }
}

Item* Dictionary::getItem(const char* cpath) const
{
    CallMarker marker("Item* Dictionary::getItem(const char*) const", this);

    if (!Contract::require(cpath != nullptr, "cpath != NULL", UNIT))
        return nullptr;
    // NOLINTNEXTLINE(clang-analyzer-cplusplus.StringChecker): the check tells whether it is null
    return getItem(std::string(cpath));
}

std::string Dictionary::marshall(const std::string& indent)
{
    CallMarker marker("std::string Dictionary::marshall(const std::string&)", this);

    return PropertyListWriter(marker, indent).write(*this);
}

std::string Dictionary::toString(const std::string& indent)
{
    CallMarker marker("std::string Dictionary::toString(const std::string&)", this);

    return DictionaryDescription(marker, indent).describe(*this);
}

void Dictionary::unMarshall(std::stringstream& in)
{
    CallMarker marker("void Dictionary::unMarshall(std::stringstream&)", this);

    PropertyListReader(marker, in).read(*this);
}

bool Dictionary::hasKey(const std::string& key) const
{
    CallMarker marker("bool Dictionary::hasKey(const std::string&) const", this);

    return m_entries.find(key) != nullptr;
}

std::list<const char*> Dictionary::findValues(const std::string& path) const
{
    CallMarker marker(
        "std::list<const char*> Dictionary::findValues(const std::string&) const", this);

    std::list<const char*> found;
    doFindValues(path, found);
    return found;
}

Item* Dictionary::findItem(const std::string& path)
{
    CallMarker marker("Item* Dictionary::findItem(const std::string&)", this);

    DictionaryWalk walk(*this, marker, DictionaryWalk::Leaves::told);
    for (const Dictionary* here = this; here != nullptr; here = walk.next()) {
        if (Item* const item = lookFor(path, *here, marker))
            return item;
    }
    return nullptr;
}

std::list<Item*> Dictionary::findItems(const std::string& path)
{
    CallMarker marker("std::list<Item*> Dictionary::findItems(const std::string&)", this);

    std::list<Item*> found;
    doFindItems(path, found);
    return found;
}

bool Dictionary::contains(Item& item)
{
    CallMarker marker("bool Dictionary::contains(Item&)", this);

    return !getItemPath(item).empty();
}

std::string Dictionary::getItemPath(Item& item)
{
    CallMarker marker("std::string Dictionary::getItemPath(Item&)", this);

    TAV_TRACE(
        marker, TraceMsgType::D, "looking for item [%x] name %s in %x", tracedAddress(&item),
        item.getName().c_str(), tracedAddress(this));
    std::string path;
    if (findEqual(item) != nullptr) {
        path = item.getName();
    } else {
        for (auto entry = m_entries.begin(); path.empty() && entry != m_entries.end(); ++entry) {
            if (Dictionary* const child = DictionaryEntries::dictionaryIn(*entry))
                path = child->doGetItemPath(item, entry->first);
        }
    }
    TAV_TRACE(marker, TraceMsgType::D, "item path is %s", path.c_str());
    return path;
}

void Dictionary::clear()
{
    CallMarker marker("void Dictionary::clear()", this);

    m_entries = DictionaryEntries();
}

void Dictionary::removeAllItems()
{
    CallMarker marker("void Dictionary::removeAllItems()", this);

    clear();
}

void Dictionary::removeAllItems(Item& item)
{
    CallMarker marker("void Dictionary::removeAllItems(Item&)", this);

    // Freed at the end only: the item itself may be among them.
    std::vector<std::unique_ptr<Item>> removed;
    DictionaryWalk walk(*this, marker);
    for (Dictionary* here = this; here != nullptr; here = walk.next())
        if (std::unique_ptr<Item> equal = here->takeEqual(item))
            removed.push_back(std::move(equal));
}

void Dictionary::removeItem(const std::string& path)
{
    CallMarker marker("void Dictionary::removeItem(const std::string&)", this);

    doRemoveItem(path);
}

void Dictionary::removeItem(Item& item)
{
    CallMarker marker("void Dictionary::removeItem(Item&)", this);

    takeEqual(item);
}

bool Dictionary::doRemoveItem(const std::string& path)
{
    CallMarker marker("bool Dictionary::doRemoveItem(const std::string&)", this);

    NestedCalls calls(&marker);
    Dictionary* here = this;
    PathKeys keys(path);
    const Entry* entry = here->m_entries.find(keys.head());
    while (entry != nullptr && !keys.isLast()) {
        here = DictionaryEntries::dictionaryIn(*entry);
        if (here == nullptr)
            return false;
        calls.enter(here);
        keys.next();
        entry = here->m_entries.find(keys.head());
    }
    if (entry == nullptr)
        return false;
    here->m_entries.take(*entry);
    return true;
}

Item* Dictionary::getFirstItem()
{
    CallMarker marker("Item* Dictionary::getFirstItem()", this);

    return m_entries.size() == 0 ? nullptr : m_entries.begin()->second.get();
}

void Dictionary::setItem(const std::string& path, Item& item)
{
    CallMarker marker("void Dictionary::setItem(const std::string&, Item&)", this);

    // Cloned before anything changes: the item may be replaced here, or hold this dictionary.
    std::unique_ptr<Item> copy(item.clone());
    NestedCalls calls(&marker);
    Dictionary* here = this;
    PathKeys keys(path);
    for (;; keys.next()) {
        TAV_TRACE(
            marker, TraceMsgType::D, "Adding on [%x] %s for path %s item %s", tracedAddress(here),
            here->getName().c_str(), std::string(keys.rest()).c_str(), item.toString("").c_str());
        if (keys.isLast())
            break;
        here = here->getOrAddDictionary(std::string(keys.head()), marker);
        if (here == nullptr)
            return;
        calls.enter(here);
    }
    const std::string key(keys.head());
    TAV_TRACE(
        marker, TraceMsgType::D, "Adding on key %s item %s", key.c_str(),
        item.toString("").c_str());
    here->m_entries.store(key, std::move(copy));
    TAV_TRACE(marker, TraceMsgType::D, "Dictionary is now %s", here->toString("").c_str());
}

void Dictionary::addValue(const std::string& path, const std::string& value)
{
    CallMarker marker("void Dictionary::addValue(const std::string&, const std::string&)", this);

    BasicItem item(lastKey(path), value);
    setItem(path, item);
}

void Dictionary::addValue(const std::string& path, int value)
{
    CallMarker marker("void Dictionary::addValue(const std::string&, int)", this);

    IntBasicItem item(lastKey(path), value);
    setItem(path, item);
}

void Dictionary::addDictionary(const std::string& path, Dictionary& source)
{
    CallMarker marker("void Dictionary::addDictionary(const std::string&, Dictionary&)", this);

    TAV_TRACE(marker, TraceMsgType::D, "adding under %s", path.c_str());
    Item* const found = getItem(path);
    Dictionary* const target = found == nullptr ? nullptr : found->getAsDictionary();
    if (target == nullptr)
        return;
    TAV_TRACE(marker, TraceMsgType::D, "item found %s", found->toString("").c_str());
    TAV_TRACE(marker, TraceMsgType::D, "item is a dictionary");
    // From a copy: the source may be one of the items that are replaced.
    const DictionaryEntries entries(source.m_entries);
    for (const Entry& entry : entries) {
        TAV_TRACE(marker, TraceMsgType::D, "adding key %s", entry.first.c_str());
        if (entry.second != nullptr)
            target->setItem(entry.first, *entry.second);
    }
}

void Dictionary::mergeDictionary(Dictionary& other)
{
    CallMarker marker("void Dictionary::mergeDictionary(Dictionary&)", this);

    DictionaryMerge(marker).run(*this, other);
}

void Dictionary::loadFromFile(const std::string& path)
{
    CallMarker marker("void Dictionary::loadFromFile(const std::string&)", this);

    PropertyListFile(marker, path).load(*this);
}

void Dictionary::saveToFile(const std::string& path)
{
    CallMarker marker("void Dictionary::saveToFile(const std::string&)", this);

    PropertyListFile(marker, path).save(*this);
}

void Dictionary::doFindItems(const std::string& path, std::list<Item*>& found)
{
    CallMarker marker("void Dictionary::doFindItems(const std::string&, std::list<Item*>&)", this);

    DictionaryWalk walk(*this, marker);
    for (const Dictionary* here = this; here != nullptr;) {
        Item* const item = here->getItem(path);
        if (item != nullptr)
            found.push_back(item);
        here = item == nullptr ? walk.next() : walk.nextBeside();
    }
}

void Dictionary::doFindValues(const std::string& path, std::list<const char*>& found) const
{
    CallMarker marker(
        "void Dictionary::doFindValues(const std::string&, std::list<const char*>&) const", this);

    DictionaryWalk walk(*this, marker);
    for (const Dictionary* here = this; here != nullptr;) {
        const Item* const item = here->getItem(path);
        if (const char* const value = item == nullptr ? nullptr : item->getValue())
            found.push_back(value);
        here = item == nullptr ? walk.next() : walk.nextBeside();
    }
}

std::string Dictionary::doGetItemPath(Item& item, const std::string& prefix)
{
    CallMarker marker("std::string Dictionary::doGetItemPath(Item&, const std::string&)", this);

    DictionaryWalk walk(*this, marker);
    for (const Dictionary* here = this; here != nullptr; here = walk.next()) {
        TAV_TRACE(
            marker, TraceMsgType::D, "looking for item [%x] name %s in %x", tracedAddress(&item),
            item.getName().c_str(), tracedAddress(here));
        if (here->findEqual(item) != nullptr)
            return prefix + "." + walk.pathOf(item.getName());
    }
    return {};
}

const Entry* Dictionary::findEqual(Item& item) const
{
    const Entry* const entry = m_entries.find(item.getName());
    const bool equal = entry != nullptr && entry->second != nullptr && item.equals(*entry->second);
    return equal ? entry : nullptr;
}

std::unique_ptr<Item> Dictionary::takeEqual(Item& item)
{
    const Entry* const entry = findEqual(item);
    return entry == nullptr ? nullptr : m_entries.take(*entry);
}

Dictionary* Dictionary::getOrAddDictionary(const std::string& key, const CallMarker& marker)
{
    if (const Entry* const entry = m_entries.find(key))
        return DictionaryEntries::dictionaryIn(*entry);
    TAV_TRACE(marker, TraceMsgType::D, "Adding new dictionary on key %s", key.c_str());
    auto added = std::make_unique<Dictionary>(key);
    Dictionary* const dictionary = added.get();
    m_entries.store(key, std::move(added));
    return dictionary;
}
