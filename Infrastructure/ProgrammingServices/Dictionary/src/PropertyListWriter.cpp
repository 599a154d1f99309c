#include "PropertyListWriter.h"

#include "Dictionary.h"

#include <stdexcept>
#include <string_view>
#include <utility>

namespace {

constexpr std::string_view s_dictionaryBegin = "<dict>\n";
constexpr std::string_view s_dictionaryEnd = "</dict>\n";
constexpr std::string_view s_keyBegin = "<key>";
constexpr std::string_view s_keyEnd = "</key>\n";

} // namespace

PropertyListWriter::PropertyListWriter(
    const CallMarker& outer, std::string indent, std::size_t maxMarkupSize)
    : m_calls(outer, "std::string Dictionary::marshall(const std::string&)"),
      m_indent(std::move(indent)), m_maxMarkupSize(maxMarkupSize)
{
}

std::string PropertyListWriter::write(const Dictionary& root)
{
    if (markupSize(root, m_indent.size()) > m_maxMarkupSize)
        throw std::length_error("the dictionaries are nested too deep");

    open(root);
    while (m_cursor.depth() > 0) {
        if (const DictionaryEntries::Entry* const entry = m_cursor.next())
            writeEntry(*entry);
        else
            close();
    }
    return std::move(m_text);
}

std::size_t PropertyListWriter::markupSize(const Dictionary& root, std::size_t indentSize)
{
    const auto dictionarySize = [&indentSize] {
        return 2 * indentSize + s_dictionaryBegin.size() + s_dictionaryEnd.size();
    };
    std::size_t size = dictionarySize();
    DictionaryCursor cursor;
    cursor.enter(root);
    while (cursor.depth() > 0) {
        const DictionaryEntries::Entry* const entry = cursor.next();
        if (entry == nullptr) {
            cursor.leave();
            if (cursor.depth() > 0)
                --indentSize;
            continue;
        }
        if (entry->second == nullptr)
            continue;
        size += indentSize + 1 + s_keyBegin.size() + entry->first.size() + s_keyEnd.size();
        if (const Dictionary* const child = DictionaryEntries::dictionaryIn(*entry)) {
            cursor.enter(*child);
            ++indentSize;
            size += dictionarySize();
        }
    }
    return size;
}

void PropertyListWriter::open(const Dictionary& dictionary)
{
    m_text.append(m_indent).append(s_dictionaryBegin);
    m_cursor.enter(dictionary);
    m_indent.push_back('\t');
}

void PropertyListWriter::writeEntry(const DictionaryEntries::Entry& entry)
{
    if (entry.second == nullptr)
        return;
    m_text.append(m_indent).append(s_keyBegin).append(entry.first).append(s_keyEnd);
    if (Dictionary* const child = entry.second->getAsDictionary()) {
        m_calls.enter(child);
        open(*child);
    } else {
        m_text.append(entry.second->marshall(m_indent));
    }
}

void PropertyListWriter::close()
{
    m_indent.pop_back();
    m_text.append(m_indent).append(s_dictionaryEnd);
    m_cursor.leave();
    m_calls.leave();
}
