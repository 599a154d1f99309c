#include "LocalizationFile.h"
#include "Require.h"

#include <cstddef>
#include <cstdint>
#include <string>

/// Each entry can be written as a line that reads back as the same entry.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string content(data, data + size);
    const auto entries = LocalizationFile::parse(content);
    if (!entries)
        return 0;

    for (const auto& [key, text] : *entries) {
        require(key.find('=') == std::string::npos, "a key ends at the first sign");
        require(key.size() + text.size() < content.size(), "nothing grows");
        std::string line = key + "=" + text;
        for (auto at = line.find('\n'); at != std::string::npos; at = line.find('\n', at))
            line.replace(at, 1, "\\n");
        const auto again = LocalizationFile::parse(line);
        require(again.has_value(), "each part of a text is UTF-8 again");
        require(again->size() == 1 && again->begin()->second == text, "read back the same");
    }
    return 0;
}
