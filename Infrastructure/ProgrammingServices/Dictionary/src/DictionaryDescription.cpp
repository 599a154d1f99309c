#include "DictionaryDescription.h"

#include "Dictionary.h"
#include "ItemAddress.h"

#include <utility>

DictionaryDescription::DictionaryDescription(const CallMarker& outer, std::string indent)
    : m_descent(&outer), m_indent(std::move(indent))
{
}

std::string DictionaryDescription::describe(const Dictionary& root)
{
    open(root);
    while (m_descent.depth() > 0 && m_text.size() <= MAX_SIZE)
        describeNextEntry();
    if (m_text.size() > MAX_SIZE) {
        m_text.resize(MAX_SIZE);
        m_text += " ...";
    }
    return std::move(m_text);
}

// Kept: no line end follows, so that the first entry stands on the dictionary's own line
void DictionaryDescription::open(const Dictionary& dictionary)
{
    m_descent.enter(dictionary);
    m_text.append(m_indent).append("Dictionary [").append(itemAddress(&dictionary));
    m_text.append("] '").append(dictionary.getName()).append("' items :");
    m_indent.push_back('\t');
}

void DictionaryDescription::describeNextEntry()
{
    const DictionaryEntries::Entry* const entry = m_descent.next();
    if (entry == nullptr) {
        m_indent.pop_back();
        m_descent.leave();
    } else if (Dictionary* const child = DictionaryEntries::dictionaryIn(*entry)) {
        open(*child);
    } else if (entry->second != nullptr) {
        m_text.append(entry->second->toString(m_indent));
    }
}
