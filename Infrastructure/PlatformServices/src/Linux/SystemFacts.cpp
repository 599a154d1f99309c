#include "SystemFacts.h"

#include <algorithm>
#include <charconv>
#include <cstdlib>
#include <string_view>

#include <sys/utsname.h>

namespace {

// The first entry of a list like "fr_FR:en"; empty entries count as none.
std::string_view firstEntry(std::string_view list)
{
    list.remove_prefix(std::min(list.find_first_not_of(':'), list.size()));
    return list.substr(0, list.find(':'));
}

// The first of the variables that is set counts, as for every other text of the system.
std::string_view localeName()
{
    for (const char* variable : {"LANGUAGE", "LC_ALL", "LC_MESSAGES", "LANG"}) {
        const char* value = std::getenv(variable);
        const std::string_view entry = firstEntry(value != nullptr ? value : "");
        if (!entry.empty())
            return entry;
    }
    return {};
}

bool isAsciiLetter(char character)
{
    return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z');
}

} // namespace

std::array<long, 3> SystemFacts::version()
{
    std::array<long, 3> numbers{};
    utsname system{};
    if (uname(&system) != 0)
        return numbers;

    const std::string_view release = system.release;
    const char* position = release.data();
    const char* const end = position + release.size();
    for (long& number : numbers) {
        const auto [stop, error] = std::from_chars(position, end, number);
        if (error != std::errc() || stop == end || *stop != '.')
            break;
        position = stop + 1;
    }
    return numbers;
}

std::string SystemFacts::preferredLanguage()
{
    // The language and territory alone: "C.UTF-8" is the "C" locale.
    const std::string_view name = localeName();
    const std::string_view language = name.substr(0, name.find_first_of(".@"));
    const bool isNamed =
        language.size() >= 2 && isAsciiLetter(language[0]) && isAsciiLetter(language[1]);
    return std::string(isNamed && language != "POSIX" ? language : "en");
}
