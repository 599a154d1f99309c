#include "BasicItem.h"

#include "CallMarker.h"
#include "ItemAddress.h"

#include <memory>
#include <utility>

BasicItem::BasicItem() : BasicItem(std::string()) {}

BasicItem::BasicItem(const std::string& name) : BasicItem(name, std::string()) {}

BasicItem::BasicItem(const std::string& name, std::string value)
    : Item(name), m_value(std::move(value))
{
    CallMarker marker("BasicItem", "BasicItem::constructor", true, this);
}

BasicItem::BasicItem(const BasicItem& other) : Item(other), m_value(other.m_value)
{
    CallMarker marker("BasicItem", "BasicItem::constructor", true, this);
}

BasicItem& BasicItem::operator=(const BasicItem& other)
{
    CallMarker marker("BasicItem& BasicItem::operator=(const BasicItem&)", this);

    Item::operator=(other);
    m_value = other.m_value;
    return *this;
}

BasicItem::~BasicItem()
{
    CallMarker marker("BasicItem", "BasicItem::destructor", false, this);
}

bool BasicItem::equals(const Item& other)
{
    CallMarker marker("bool BasicItem::equals(const Item&)", this);

    const char* const value = other.getValue();
    // What getValue() answers ends at a zero byte; a text of this class is compared whole.
    const auto* const text = dynamic_cast<const BasicItem*>(&other);
    const bool equal = value != nullptr && getName() == other.getName() &&
                       m_value == (text == nullptr ? value : text->m_value);
    TAV_TRACE(marker, TraceMsgType::D, "equals returns %d", equal);
    return equal;
}

Item* BasicItem::clone()
{
    CallMarker marker("Item* BasicItem::clone()", this);

    return std::make_unique<BasicItem>(*this).release();
}

const char* BasicItem::getValue() const
{
    CallMarker marker("const char* BasicItem::getValue() const", this);

    return m_value.c_str();
}

Item* BasicItem::getItem(const std::string& /*path*/) const
{
    CallMarker marker("Item* BasicItem::getItem(const std::string&) const", this);

    return nullptr;
}

Item* BasicItem::getItem(const char* /*path*/) const
{
    CallMarker marker("Item* BasicItem::getItem(const char*) const", this);

    return nullptr;
}

std::string BasicItem::marshall(const std::string& indent)
{
    CallMarker marker("std::string BasicItem::marshall(const std::string&)", this);

    return indent + "<string>" + m_value + "</string>\n";
}

std::string BasicItem::toString(const std::string& indent)
{
    CallMarker marker("std::string BasicItem::toString(const std::string&)", this);

    return indent + "BasicItem [" + itemAddress(this) + "] name : '" + getName() + "' value : '" +
           m_value + "'\n";
}

void BasicItem::unMarshall(std::stringstream& in)
{
    CallMarker marker("void BasicItem::unMarshall(std::stringstream&)", this);

    std::string line;
    std::getline(in, line);
    setValue(getXmlVal("<string>", line));
}

void BasicItem::setValue(const std::string& value)
{
    CallMarker marker("void BasicItem::setValue(const std::string&)", this);

    m_value = value;
}
