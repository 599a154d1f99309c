#include "SystemFolders.h"

#include "SafeFile.h"
#include "TextLine.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <filesystem>
#include <optional>
#include <string_view>

#include <pwd.h>
#include <sys/auxv.h>
#include <unistd.h>

namespace {

std::string withoutLastSeparators(std::string path)
{
    while (path.size() > 1 && path.back() == '/')
        path.pop_back();
    return path;
}

// A folder that is given from outside counts only when it is absolute: another would be a different
// one in each current folder.
std::string absoluteFolder(const char* path)
{
    return path != nullptr && *path == '/' ? withoutLastSeparators(path) : std::string();
}

std::string baseFolder(const char* variable, const std::string& fallback)
{
    const std::string folder = absoluteFolder(std::getenv(variable));
    return folder.empty() ? fallback : folder;
}

std::string homeOfPasswordDatabase()
{
    std::array<char, 16384> texts{};
    passwd entry{};
    passwd* found = nullptr;
    getpwuid_r(getuid(), &entry, texts.data(), texts.size(), &found);
    return found != nullptr ? absoluteFolder(entry.pw_dir) : std::string();
}

// A path below the home folder; empty when there is no home folder.
std::string belowHome(std::string_view relative)
{
    std::string home = absoluteFolder(std::getenv("HOME"));
    if (home.empty())
        home = homeOfPasswordDatabase();
    return home.empty() ? std::string() : home.append(relative);
}

// The content of a quoted shell text: up to the closing quote, a backslash keeps what follows it.
std::string unquoted(std::string_view text)
{
    std::string content;
    for (std::size_t i = 0; i < text.size() && text[i] != '"'; ++i) {
        if (text[i] == '\\' && i + 1 < text.size())
            ++i;
        content += text[i];
    }
    return content;
}

// A line XDG_DESKTOP_DIR="$HOME/..." or ="/...": those are the only forms that the file may hold.
std::optional<std::string> desktopOfLine(std::string_view line)
{
    line.remove_prefix(std::min(line.find_first_not_of(" \t"), line.size()));
    constexpr std::string_view key = "XDG_DESKTOP_DIR=\"";
    if (!line.starts_with(key))
        return std::nullopt;
    line.remove_prefix(key.size());

    constexpr std::string_view home = "$HOME";
    if (line.starts_with("$HOME/") || line.starts_with("$HOME\""))
        return withoutLastSeparators(belowHome(unquoted(line.substr(home.size()))));
    if (line.starts_with('/'))
        return withoutLastSeparators(unquoted(line));
    return std::nullopt;
}

} // namespace

std::string SystemFolders::executable()
{
    std::error_code failed;
    return std::filesystem::canonical("/proc/self/exe", failed).string();
}

std::string SystemFolders::userData()
{
    return baseFolder("XDG_DATA_HOME", belowHome("/.local/share"));
}

// Whoever starts a process with more rights than his own must not choose where it writes.
std::string SystemFolders::commonData()
{
    const std::string systems = "/var/lib";
    return getauxval(AT_SECURE) == 0 ? baseFolder("TAV_COMMON_DATA_DIR", systems) : systems;
}

std::string SystemFolders::desktop()
{
    const std::string settings =
        baseFolder("XDG_CONFIG_HOME", belowHome("/.config")) + "/user-dirs.dirs";
    const std::string text =
        SafeFile::read(settings, SafeFile::Links::follow).value_or(std::string());

    std::string desktop = belowHome("/Desktop");
    for (std::string_view rest = text; !rest.empty();)
        desktop = desktopOfLine(takeLine(rest)).value_or(desktop);
    return desktop;
}
