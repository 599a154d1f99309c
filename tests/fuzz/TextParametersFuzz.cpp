#include "ParameterText.h"
#include "Require.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <sstream>
#include <string>

namespace {

bool isStorable(const ParameterText& text)
{
    return std::all_of(text.parameters.begin(), text.parameters.end(), [](const auto& parameter) {
        return ParameterText::isStorable(parameter.first, parameter.second);
    });
}

/// What the file holds, told once more in another way.
ParameterText linesOf(const std::string& bytes)
{
    ParameterText lines;
    std::istringstream in(bytes);
    for (std::string line; std::getline(in, line);) {
        const std::size_t sign = line.find('=');
        if (sign == std::string::npos)
            lines.otherLines.push_back(line);
        else
            lines.parameters[line.substr(0, sign)] = line.substr(sign + 1);
    }
    return lines;
}

} // namespace

/// Whatever is read can be written, is read back the same, and keeps every line of a file.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string bytes(data, data + size);
    const ParameterText first = ParameterText::parse(bytes);
    const std::string text = first.toText();
    const ParameterText second = ParameterText::parse(text);

    const ParameterText lines = linesOf(bytes);
    require(first.otherLines == lines.otherLines, "each other line is kept, in its order");
    require(first.parameters == lines.parameters, "each parameter has its last value");
    require(isStorable(first), "what was read can be stored");
    require(second.parameters == first.parameters, "the parameters are read back");
    require(second.otherLines == first.otherLines, "the other lines are read back");
    require(second.toText() == text, "written again to the same text");
    require(text.size() <= bytes.size() + 1, "writing adds a last line feed at most");
    return 0;
}
