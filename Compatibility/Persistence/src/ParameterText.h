#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

/// Parameter name to value, in the order of the names' bytes.
using t_paramMap = std::map<std::string, std::string>;

/// The content of a text parameter file: a line "name=value" for each parameter.
///
/// Nothing is escaped: the first "=" of a line separates, so a value may hold more of them. A line
/// without "=" is no parameter; it is kept as it stands, ahead of the parameters.
struct ParameterText {
    t_paramMap parameters;
    std::vector<std::string> otherLines;

    /// Reads the lines of a file; the last one counts without a line feed. A name that stands twice
    /// has the later value.
    static ParameterText parse(std::string_view text);

    /// The lines, each with a line feed at its end.
    std::string toText() const;

    /// Whether a line of this name and value would be read back as the same.
    static bool isStorable(const std::string& name, const std::string& value);
};
