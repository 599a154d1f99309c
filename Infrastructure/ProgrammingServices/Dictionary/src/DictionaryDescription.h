#pragma once

#include "DictionaryDescent.h"

#include <cstddef>
#include <string>

/// The description of one dictionary, with everything below it, for traces: Dictionary::toString.
class DictionaryDescription {
public:
    /// A longer description is cut here and ends with " ...": it is indented by depth, so that a
    /// deep tree's would grow without bound. A trace message keeps less.
    static constexpr std::size_t MAX_SIZE = std::size_t{1} << 20;

    /// `indent` stands in front of the outermost item.
    DictionaryDescription(const CallMarker& outer, std::string indent);

    std::string describe(const Dictionary& root);

private:
    void open(const Dictionary& dictionary);
    void describeNextEntry();

    DictionaryDescent m_descent;
    std::string m_indent;
    std::string m_text;
};
