#pragma once

#include <string>
#include <string_view>

/// Looks at UTF-8 text, where white space and line ends are Unicode's.
namespace Utf8Text {

/// False for overlong forms, surrogates, values above U+10FFFF, and sequences cut short.
bool isWellFormed(std::string_view text);

/// Cuts the first line off `rest` and returns it without its terminator: a line feed, a carriage
/// return, or a Unicode line or paragraph separator. A carriage return and line feed count as two,
/// with an empty line between.
std::string_view takeLine(std::string_view& rest);

/// `text` without the white space, line terminators included, at both ends.
std::string_view trim(std::string_view text);

/// `text` with every occurrence of `from` replaced by `to`; an empty `from` occurs nowhere, and
/// what was put in is not searched again.
std::string replaceAll(std::string_view text, std::string_view from, std::string_view to);

} // namespace Utf8Text
