#include "LocalizationFile.h"

#include "CallMarker.h"
#include "Utf8Text.h"

std::optional<LocalizationFile::Entries> LocalizationFile::parse(std::string_view content)
{
    CallMarker marker("LocalizationFile::parse");
    if (!Utf8Text::isWellFormed(content))
        return std::nullopt;

    Entries entries;
    while (!content.empty()) {
        const std::string line =
            Utf8Text::replaceAll(Utf8Text::trim(Utf8Text::takeLine(content)), "\\n", "\n");
        const std::size_t sign = line.find('=');
        if (sign != std::string::npos)
            entries[line.substr(0, sign)] = line.substr(sign + 1);
    }
    return entries;
}
