#include "ParameterText.h"

#include "CallMarker.h"

#include <algorithm>

ParameterText ParameterText::parse(std::string_view text)
{
    CallMarker marker("ParameterText::parse");
    ParameterText result;
    while (!text.empty()) {
        const std::string_view line = text.substr(0, text.find('\n'));
        text.remove_prefix(std::min(line.size() + 1, text.size()));
        const std::size_t separator = line.find('=');
        if (separator == std::string_view::npos)
            result.otherLines.emplace_back(line);
        else
            result.parameters.insert_or_assign(
                result.parameters.end(), // the lines are sorted, as a rule
                std::string(line.substr(0, separator)), line.substr(separator + 1));
    }
    return result;
}

std::string ParameterText::toText() const
{
    CallMarker marker("ParameterText::toText", this);
    std::string text;
    for (const std::string& line : otherLines)
        text.append(line).append(1, '\n');
    for (const auto& [name, value] : parameters)
        text.append(name).append(1, '=').append(value).append(1, '\n');
    return text;
}

bool ParameterText::isStorable(const std::string& name, const std::string& value)
{
    CallMarker marker("ParameterText::isStorable");
    return name.find_first_of("=\n") == std::string::npos && value.find('\n') == std::string::npos;
}
