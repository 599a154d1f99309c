#include "PropertyListReader.h"

#include "BasicItem.h"
#include "Dictionary.h"
#include "IntBasicItem.h"

#include <memory>
#include <utility>

PropertyListReader::PropertyListReader(const CallMarker& outer, std::stringstream& in)
    : m_open(&outer), m_in(in)
{
}

void PropertyListReader::read(Dictionary& root)
{
    nextLine();
    if (!lineHas("<dict>"))
        return;

    m_open.enter(&root, &DictionaryEntries::of(root));
    while (m_open.depth() > 0)
        readEntry();
}

void PropertyListReader::nextLine()
{
    // At the end of the stream the line is empty: getline() would leave the last one in it.
    m_line.clear();
    std::getline(m_in, m_line);
}

bool PropertyListReader::lineHas(const char* tag) const
{
    return m_line.find(tag) != std::string::npos;
}

void PropertyListReader::readEntry()
{
    nextLine();
    if (lineHas("<key>"))
        readValue(Item::getXmlVal("<key>", m_line));
    else
        leave();
}

// Kept: a value of any other kind is skipped, and its key with it
void PropertyListReader::readValue(const std::string& key)
{
    const std::streampos start = m_in.tellg();
    nextLine();
    if (lineHas("<string>"))
        readLeaf(key, std::make_unique<BasicItem>(key), start);
    else if (lineHas("<int>"))
        readLeaf(key, std::make_unique<IntBasicItem>(key), start);
    else if (lineHas("<dict>"))
        enter(key);
}

void PropertyListReader::readLeaf(
    const std::string& key, std::unique_ptr<Item> leaf, std::streampos start)
{
    m_in.seekg(start);
    leaf->unMarshall(m_in);
    m_open.here()->store(key, std::move(leaf));
}

void PropertyListReader::enter(const std::string& key)
{
    auto child = std::make_unique<Dictionary>(key);
    Dictionary& opened = *child;
    m_open.here()->store(key, std::move(child));
    m_open.enter(&opened, &DictionaryEntries::of(opened));
}

// Kept: the line that ended the dictionary is consumed, whatever it holds; at the end of the stream
// every dictionary still open ends so
void PropertyListReader::leave()
{
    m_in.clear();
    m_open.leave();
}
