#include "Utf8Text.h"

#include "CallMarker.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace {

/// Which bytes may follow a lead byte: the first continuation byte's range is narrower than 80 to
/// BF where overlong forms, surrogates or values above U+10FFFF would fit in otherwise.
struct Sequence {
    unsigned char firstLead;
    unsigned char lastLead;
    std::size_t length;
    unsigned char lowest;
    unsigned char highest;
};

constexpr std::array<Sequence, 9> SEQUENCES = {{
    {0x00, 0x7F, 1, 0x80, 0xBF},
    {0xC2, 0xDF, 2, 0x80, 0xBF},
    {0xE0, 0xE0, 3, 0xA0, 0xBF},
    {0xE1, 0xEC, 3, 0x80, 0xBF},
    {0xED, 0xED, 3, 0x80, 0x9F},
    {0xEE, 0xEF, 3, 0x80, 0xBF},
    {0xF0, 0xF0, 4, 0x90, 0xBF},
    {0xF1, 0xF3, 4, 0x80, 0xBF},
    {0xF4, 0xF4, 4, 0x80, 0x8F},
}};

constexpr std::array<std::string_view, 4> LINE_TERMINATORS = {
    "\n", "\r", "\xE2\x80\xA8", "\xE2\x80\xA9"};

constexpr std::array<std::string_view, 25> WHITE_SPACE = {
    "\t",           "\n",           "\v",           "\f",           "\r",           " ",
    "\xC2\x85",     "\xC2\xA0",     "\xE1\x9A\x80", "\xE2\x80\x80", "\xE2\x80\x81", "\xE2\x80\x82",
    "\xE2\x80\x83", "\xE2\x80\x84", "\xE2\x80\x85", "\xE2\x80\x86", "\xE2\x80\x87", "\xE2\x80\x88",
    "\xE2\x80\x89", "\xE2\x80\x8A", "\xE2\x80\xA8", "\xE2\x80\xA9", "\xE2\x80\xAF", "\xE2\x81\x9F",
    "\xE3\x80\x80"};

bool isWithin(char byte, unsigned char lowest, unsigned char highest)
{
    const auto value = static_cast<unsigned char>(byte);
    return lowest <= value && value <= highest;
}

/// The length of the character that `text` begins with; 0 when it is not well formed.
std::size_t characterLength(std::string_view text)
{
    const auto* const sequence =
        std::find_if(SEQUENCES.begin(), SEQUENCES.end(), [&](const Sequence& s) {
            return isWithin(text.front(), s.firstLead, s.lastLead);
        });
    if (sequence == SEQUENCES.end() || text.size() < sequence->length)
        return 0;
    if (sequence->length > 1 && !isWithin(text[1], sequence->lowest, sequence->highest))
        return 0;
    for (std::size_t i = 2; i < sequence->length; ++i)
        if (!isWithin(text[i], 0x80, 0xBF))
            return 0;
    return sequence->length;
}

} // namespace

bool Utf8Text::isWellFormed(std::string_view text)
{
    CallMarker marker("Utf8Text::isWellFormed");
    while (!text.empty()) {
        const std::size_t length = characterLength(text);
        if (length == 0)
            return false;
        text.remove_prefix(length);
    }
    return true;
}

std::string_view Utf8Text::takeLine(std::string_view& rest)
{
    CallMarker marker("Utf8Text::takeLine");
    for (std::size_t end = 0; end < rest.size(); ++end) {
        const std::string_view tail = rest.substr(end);
        for (const std::string_view terminator : LINE_TERMINATORS) {
            if (!tail.starts_with(terminator))
                continue;
            const std::string_view line = rest.substr(0, end);
            rest = tail.substr(terminator.size());
            return line;
        }
    }
    const std::string_view line = rest;
    rest = {};
    return line;
}

std::string_view Utf8Text::trim(std::string_view text)
{
    CallMarker marker("Utf8Text::trim");
    const auto spaceAtStart = [&](std::string_view space) { return text.starts_with(space); };
    const auto spaceAtEnd = [&](std::string_view space) { return text.ends_with(space); };

    const auto* space = WHITE_SPACE.begin();
    while ((space = std::find_if(WHITE_SPACE.begin(), WHITE_SPACE.end(), spaceAtStart)) !=
           WHITE_SPACE.end())
        text.remove_prefix(space->size());
    while ((space = std::find_if(WHITE_SPACE.begin(), WHITE_SPACE.end(), spaceAtEnd)) !=
           WHITE_SPACE.end())
        text.remove_suffix(space->size());
    return text;
}

std::string Utf8Text::replaceAll(std::string_view text, std::string_view from, std::string_view to)
{
    CallMarker marker("Utf8Text::replaceAll");
    std::string result;
    while (!from.empty()) {
        const std::size_t found = text.find(from);
        if (found == std::string_view::npos)
            break;
        result.append(text.substr(0, found)).append(to);
        text.remove_prefix(found + from.size());
    }
    return result.append(text);
}
