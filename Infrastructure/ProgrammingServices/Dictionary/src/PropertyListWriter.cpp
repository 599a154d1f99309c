#include "PropertyListWriter.h"

#include "Dictionary.h"

#include <stdexcept>
#include <string_view>
#include <utility>

namespace {

constexpr std::string_view DICTIONARY_BEGIN = "<dict>\n";
constexpr std::string_view DICTIONARY_END = "</dict>\n";
constexpr std::string_view KEY_BEGIN = "<key>";
constexpr std::string_view KEY_END = "</key>\n";

} // namespace

PropertyListWriter::PropertyListWriter(
    const CallMarker& outer, std::string indent, std::size_t maxMarkupSize)
    : m_descent(&outer), m_indent(std::move(indent)), m_maxMarkupSize(maxMarkupSize)
{
}

std::string PropertyListWriter::write(const Dictionary& root)
{
    if (markupSize(root, m_indent.size()) > m_maxMarkupSize)
        throw std::length_error("the dictionaries are nested too deep");

    open(root);
    while (m_descent.depth() > 0) {
        if (const DictionaryEntries::Entry* const entry = m_descent.next())
            writeEntry(*entry);
        else
            close();
    }
    return std::move(m_text);
}

std::size_t PropertyListWriter::markupSize(const Dictionary& root, std::size_t indentSize)
{
    std::size_t size = 0;
    DictionaryDescent descent(nullptr);
    const auto enter = [&](const Dictionary& dictionary) {
        const std::size_t indents = 2 * (indentSize + descent.depth());
        size += indents + DICTIONARY_BEGIN.size() + DICTIONARY_END.size();
        descent.enter(dictionary);
    };
    enter(root);
    while (descent.depth() > 0) {
        const DictionaryEntries::Entry* const entry = descent.next();
        if (entry == nullptr) {
            descent.leave();
        } else if (entry->second != nullptr) {
            size += indentSize + descent.depth();
            size += KEY_BEGIN.size() + entry->first.size() + KEY_END.size();
            if (const Dictionary* const child = DictionaryEntries::dictionaryIn(*entry))
                enter(*child);
        }
    }
    return size;
}

void PropertyListWriter::open(const Dictionary& dictionary)
{
    m_descent.enter(dictionary);
    m_text.append(m_indent).append(DICTIONARY_BEGIN);
    m_indent.push_back('\t');
}

void PropertyListWriter::writeEntry(const DictionaryEntries::Entry& entry)
{
    if (entry.second == nullptr)
        return;
    m_text.append(m_indent).append(KEY_BEGIN).append(entry.first).append(KEY_END);
    if (const Dictionary* const child = entry.second->getAsDictionary())
        open(*child);
    else
        m_text.append(entry.second->marshall(m_indent));
}

void PropertyListWriter::close()
{
    m_indent.pop_back();
    m_text.append(m_indent).append(DICTIONARY_END);
    m_descent.leave();
}
