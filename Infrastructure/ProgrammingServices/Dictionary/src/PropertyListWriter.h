#pragma once

#include "DictionaryDescent.h"

#include <cstddef>
#include <string>

/// Writes one dictionary, with everything below it, as the lines of a property list.
class PropertyListWriter {
public:
    /// The most bytes that the lines of the dictionaries and keys may take. A line is indented by
    /// its depth, so n nested dictionaries take n * n bytes: a tree nested too deep to be written
    /// is refused before anything is. A value's line is no deeper than its key's, so this bounds
    /// the whole text by the values and twice this size.
    static constexpr std::size_t MAX_MARKUP_SIZE = std::size_t{512} << 20;

    /// `indent` stands in front of the outermost lines; `maxMarkupSize` is the bound.
    PropertyListWriter(
        const CallMarker& outer, std::string indent, std::size_t maxMarkupSize = MAX_MARKUP_SIZE);

    /// The text. Throws std::length_error when it would grow past the bound.
    std::string write(const Dictionary& root);

    /// The exact size of the lines of the dictionaries and keys, without the values' lines.
    static std::size_t markupSize(const Dictionary& root, std::size_t indentSize);

private:
    void open(const Dictionary& dictionary);
    void writeEntry(const DictionaryEntries::Entry& entry);
    void close();

    DictionaryDescent m_descent;
    std::string m_indent;
    std::size_t m_maxMarkupSize;
    std::string m_text;
};
