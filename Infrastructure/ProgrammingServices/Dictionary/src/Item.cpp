#include "Item.h"

#include "CallMarker.h"
#include "KFDictionaryParsingException.h"

#include <utility>

namespace {

constexpr const char* UNIT = "Infrastructure/ProgrammingServices/Dictionary/src/Item";

} // namespace

Item::Item() : Item(std::string()) {}

Item::Item(std::string name) : m_name(std::move(name))
{
    CallMarker marker("Item", "Item::constructor", true, this);
}

Item::Item(const Item& other) : Item(other.m_name) {}

Item& Item::operator=(const Item& other)
{
    CallMarker marker("Item& Item::operator=(const Item&)", this);

    m_name = other.m_name;
    return *this;
}

Item::~Item()
{
    CallMarker marker("Item", "Item::destructor", false, this);
}

const char* Item::findValue(const std::string& /*path*/) const
{
    CallMarker marker("const char* Item::findValue(const std::string&) const", this);

    return nullptr;
}

std::list<const char*> Item::findValues(const std::string& /*path*/)
{
    CallMarker marker("std::list<const char*> Item::findValues(const std::string&)", this);

    return {};
}

Dictionary* Item::getAsDictionary()
{
    CallMarker marker("Dictionary* Item::getAsDictionary()", this);

    return nullptr;
}

const char* Item::getValue() const
{
    CallMarker marker("const char* Item::getValue() const", this);

    return nullptr;
}

const char* Item::getValue(const std::string& /*path*/) const
{
    CallMarker marker("const char* Item::getValue(const std::string&) const", this);

    return nullptr;
}

bool Item::getValueAs(int& /*out*/) const
{
    CallMarker marker("bool Item::getValueAs(int&) const", this);

    return false;
}

bool Item::getValueAs(const std::string& /*path*/, int& /*out*/) const
{
    CallMarker marker("bool Item::getValueAs(const std::string&, int&) const", this);

    return false;
}

bool Item::contains(const std::string& /*path*/)
{
    CallMarker marker("bool Item::contains(const std::string&)", this);

    return false;
}

const std::string& Item::getName() const
{
    CallMarker marker("const std::string& Item::getName() const", this);

    return m_name;
}

void Item::setName(const std::string& name)
{
    CallMarker marker("void Item::setName(const std::string&)", this);

    m_name = name;
}

std::string Item::trim(const std::string& text)
{
    CallMarker marker("std::string Item::trim(const std::string&)");

    static constexpr const char* s_trimmed = " \t\n";
    const std::size_t first = text.find_first_not_of(s_trimmed);
    if (first == std::string::npos)
        return {};
    return text.substr(first, text.find_last_not_of(s_trimmed) - first + 1);
}

std::string Item::getXmlVal(const char* tag, const std::string& line)
{
    CallMarker marker("std::string Item::getXmlVal(const char*, const std::string&)");

    const std::string opening = tag;
    const std::size_t found = line.find(opening);
    // Kept: the message says "<key>" whatever the tag was
    if (found == std::string::npos)
        throw KFDictionaryParsingException("Can't find <key> in stream", UNIT, 180);

    const std::size_t start = found + opening.size();
    // Kept: searched from the start of the line; one that lies before the tag ends nothing
    const std::size_t end = line.find("</");
    const bool ends = end != std::string::npos && end >= start;
    std::string value = trim(line.substr(start, ends ? end - start : std::string::npos));
    TAV_TRACE(marker, TraceMsgType::D, "getXmlVal returns '%s'", value.c_str());
    return value;
}
