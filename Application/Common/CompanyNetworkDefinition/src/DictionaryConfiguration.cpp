#include "DictionaryConfiguration.h"

#include "BasicItem.h"
#include "CallMarker.h"
#include "CompanyNetworkConstants.h"

#include <utility>

// Of the leak checker; null in a program without one.
// NOLINTNEXTLINE(bugprone-reserved-identifier): the checker's own name
extern "C" [[gnu::weak]] void __lsan_ignore_object(const void* object);

namespace {

/// Tells the leak checker, where there is one, that nobody will ever destroy the object.
void leakOnPurpose(const Dictionary* dictionary)
{
    CallMarker marker("leakOnPurpose");
    if (__lsan_ignore_object != nullptr)
        __lsan_ignore_object(dictionary);
}

} // namespace

DictionaryConfiguration::DictionaryConfiguration(Dictionary* dictionary)
    : m_dictionary(std::make_unique<Dictionary>(*dictionary))
{
    CallMarker marker(
        "DictionaryConfiguration", "DictionaryConfiguration::constructor", true, this);
}

DictionaryConfiguration::DictionaryConfiguration(const DictionaryConfiguration& other)
    : m_dictionary(std::make_unique<Dictionary>(*other.m_dictionary))
{
    CallMarker marker(
        "DictionaryConfiguration", "DictionaryConfiguration::constructor", true, this);
}

DictionaryConfiguration::~DictionaryConfiguration()
{
    CallMarker marker(
        "DictionaryConfiguration", "DictionaryConfiguration::destructor", false, this);
}

DictionaryConfiguration::operator Dictionary&()
{
    CallMarker marker("DictionaryConfiguration::operator Dictionary&", this);
    return *m_dictionary;
}

DictionaryConfiguration& DictionaryConfiguration::operator=(const DictionaryConfiguration& other)
{
    CallMarker marker("DictionaryConfiguration::operator=", this);
    if (this == &other) {
        // Kept: a section loses its content when it is assigned to itself
        m_dictionary = std::make_unique<Dictionary>(m_dictionary->getName());
    } else {
        auto copy = std::make_unique<Dictionary>(*other.m_dictionary);
        // Kept: the dictionary held before is never destroyed
        leakOnPurpose(m_dictionary.release());
        m_dictionary = std::move(copy);
    }
    return *this;
}

std::string DictionaryConfiguration::getDictionaryValue(
    Dictionary& dictionary, const std::string& key)
{
    CallMarker marker("DictionaryConfiguration::getDictionaryValue");
    const char* const value = dictionary.getValue(key);
    return value == nullptr ? EMPTY_STRING : value;
}

void DictionaryConfiguration::setDictionaryValue(
    Dictionary& dictionary, const std::string& key, const std::string& value)
{
    CallMarker marker("DictionaryConfiguration::setDictionaryValue");
    if (auto* const text = dynamic_cast<BasicItem*>(dictionary.getItem(key)))
        text->setValue(value);
    else
        dictionary.addValue(key, value);
}

std::string DictionaryConfiguration::toText(bool value)
{
    CallMarker marker("DictionaryConfiguration::toText");
    return value ? TRUE_BOOLEAN_STRING : FALSE_BOOLEAN_STRING;
}

void DictionaryConfiguration::storeIn(Dictionary& parent) const
{
    CallMarker marker("DictionaryConfiguration::storeIn", this);
    parent.setItem(m_dictionary->getName(), *m_dictionary);
}

Dictionary& DictionaryConfiguration::held() const
{
    CallMarker marker("DictionaryConfiguration::held", this);
    return *m_dictionary;
}

std::string DictionaryConfiguration::getText(const std::string& key) const
{
    CallMarker marker("DictionaryConfiguration::getText", this);
    return getDictionaryValue(*m_dictionary, key);
}

void DictionaryConfiguration::setText(const std::string& key, const std::string& value)
{
    CallMarker marker("DictionaryConfiguration::setText", this);
    setDictionaryValue(*m_dictionary, key, value);
}

bool DictionaryConfiguration::isTrue(const std::string& key) const
{
    CallMarker marker("DictionaryConfiguration::isTrue", this);
    return getText(key) == TRUE_BOOLEAN_STRING;
}
