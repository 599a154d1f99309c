#include "ParameterText.h"
#include "Require.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>

namespace {

bool isStorable(const ParameterText& text)
{
    return std::all_of(text.parameters.begin(), text.parameters.end(), [](const auto& parameter) {
        return ParameterText::isStorable(parameter.first, parameter.second);
    });
}

} // namespace

/// Whatever is read can be written, is read back the same, and keeps every line of a file.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string bytes(data, data + size);
    const ParameterText first = ParameterText::parse(bytes);
    const std::string text = first.toText();
    const ParameterText second = ParameterText::parse(text);

    require(isStorable(first), "what was read can be stored");
    require(second.parameters == first.parameters, "the parameters are read back");
    require(second.otherLines == first.otherLines, "the other lines are read back");
    require(second.toText() == text, "written again to the same text");
    require(text.size() <= bytes.size() + 1, "writing adds a last line feed at most");
    return 0;
}
