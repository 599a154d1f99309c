#include "IntBasicItem.h"

#include "CallMarker.h"
#include "ItemAddress.h"

#include <algorithm>
#include <cstdlib>
#include <limits>
#include <memory>

IntBasicItem::IntBasicItem() : IntBasicItem(std::string()) {}

IntBasicItem::IntBasicItem(const std::string& name) : IntBasicItem(name, 0) {}

IntBasicItem::IntBasicItem(const std::string& name, int value) : Item(name), m_value(value)
{
    CallMarker marker("IntBasicItem", "IntBasicItem::constructor", true, this);
}

IntBasicItem::IntBasicItem(const IntBasicItem& other) : Item(other), m_value(other.m_value)
{
    CallMarker marker("IntBasicItem", "IntBasicItem::constructor", true, this);
}

IntBasicItem& IntBasicItem::operator=(const IntBasicItem& other)
{
    CallMarker marker("IntBasicItem& IntBasicItem::operator=(const IntBasicItem&)", this);

    Item::operator=(other);
    m_value = other.m_value;
    return *this;
}

IntBasicItem::~IntBasicItem()
{
    CallMarker marker("IntBasicItem", "IntBasicItem::destructor", false, this);
}

bool IntBasicItem::equals(const Item& other)
{
    CallMarker marker("bool IntBasicItem::equals(const Item&)", this);

    int value = 0;
    const bool equal = other.getValueAs(value) && getName() == other.getName() && m_value == value;
    TAV_TRACE(marker, TraceMsgType::D, "equals returns %d", equal);
    return equal;
}

Item* IntBasicItem::clone()
{
    CallMarker marker("Item* IntBasicItem::clone()", this);

    return std::make_unique<IntBasicItem>(*this).release();
}

bool IntBasicItem::getValueAs(int& out) const
{
    CallMarker marker("bool IntBasicItem::getValueAs(int&) const", this);

    out = m_value;
    return true;
}

Item* IntBasicItem::getItem(const std::string& /*path*/) const
{
    CallMarker marker("Item* IntBasicItem::getItem(const std::string&) const", this);

    return nullptr;
}

Item* IntBasicItem::getItem(const char* /*path*/) const
{
    CallMarker marker("Item* IntBasicItem::getItem(const char*) const", this);

    return nullptr;
}

std::string IntBasicItem::marshall(const std::string& /*indent*/)
{
    CallMarker marker("std::string IntBasicItem::marshall(const std::string&)", this);

    return "<int>" + std::to_string(m_value) + "</int>\n";
}

std::string IntBasicItem::toString(const std::string& indent)
{
    CallMarker marker("std::string IntBasicItem::toString(const std::string&)", this);

    return indent + "IntBasicItem [" + itemAddress(this) + "] name : '" + getName() +
           "' value : '" + std::to_string(m_value) + "'\n";
}

void IntBasicItem::unMarshall(std::stringstream& in)
{
    CallMarker marker("void IntBasicItem::unMarshall(std::stringstream&)", this);

    std::string line;
    std::getline(in, line);
    const long number = std::strtol(getXmlVal("<int>", line).c_str(), nullptr, 10);
    using Range = std::numeric_limits<int>;
    setValue(static_cast<int>(std::clamp<long>(number, Range::min(), Range::max())));
}

void IntBasicItem::setValue(int value)
{
    CallMarker marker("void IntBasicItem::setValue(int)", this);

    m_value = value;
}
