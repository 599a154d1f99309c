#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>

/// The format of a localization file: UTF-8 text with one "KEY=text" a line.
///
/// A line is trimmed, its backslash-n become line feeds, and it is split at the first "="; blanks
/// around that sign belong to key and text. A line without "=" is a comment. The last of several
/// lines with one key counts. There is no other syntax, so nothing but the encoding can be wrong.
class LocalizationFile {
public:
    using Entries = std::map<std::string, std::string>;

    /// Nothing when the content is not well-formed UTF-8.
    static std::optional<Entries> parse(std::string_view content);
};
