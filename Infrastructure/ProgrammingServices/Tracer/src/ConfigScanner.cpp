#include "ConfigScanner.h"

#include "Console.h"
#include "SafeFile.h"

#include <array>
#include <charconv>
#include <utility>

namespace {

struct LevelWord {
    std::string_view suffix;
    std::uint32_t bit;
};

constexpr std::array LEVEL_WORDS{
    LevelWord{"DEBUG", 1},    LevelWord{"ERROR", 2},     LevelWord{"WARNING", 4},
    LevelWord{"LEVEL_0", 8},  LevelWord{"LEVEL_1", 16},  LevelWord{"LEVEL_2", 32},
    LevelWord{"LEVEL_3", 64}, LevelWord{"LEVEL_4", 128}, LevelWord{"LEVEL_5", 256},
};

constexpr std::string_view BLANKS = " \t";

} // namespace

ConfigScanner::ConfigScanner(std::string content, std::string_view wordPrefix)
    : m_content(std::move(content)), m_wordPrefix(wordPrefix)
{
}

std::string ConfigScanner::readFile(const char* fileName, const char* facility)
{
    std::optional<std::string> content = SafeFile::read(fileName, SafeFile::Links::follow);
    if (!content)
        Console::writeError(
            std::string("Warning: cannot open ") + facility + " configuration file \"" + fileName +
            "\"\n");
    return std::move(content).value_or(std::string());
}

bool ConfigScanner::nextLine()
{
    const std::size_t end = m_content.find('\n', m_nextLine);
    // Kept: a last line without an end of line is dropped.
    if (end == std::string::npos)
        return false;
    m_rest = std::string_view(m_content).substr(m_nextLine, end - m_nextLine);
    if (m_rest.starts_with('#'))
        m_rest = {};
    m_nextLine = end + 1;
    ++m_lineNumber;
    return true;
}

bool ConfigScanner::isAtEndOfLine()
{
    m_rest.remove_prefix(std::min(m_rest.find_first_not_of(BLANKS), m_rest.size()));
    return m_rest.empty();
}

bool ConfigScanner::readName(std::string& name)
{
    name = readToken();
    // The name ends up in C strings, which would silently end at the NUL.
    return !name.empty() && name.find('\0') == std::string::npos;
}

bool ConfigScanner::readNumber(std::int32_t& number)
{
    const std::string_view token = readToken();
    if (token.empty() || token.find_first_not_of("0123456789") != std::string_view::npos)
        return false;
    const char* const end = token.data() + token.size();
    return std::from_chars(token.data(), end, number).ec == std::errc();
}

bool ConfigScanner::readLevelWord(std::uint32_t& mask)
{
    std::string_view token = readToken();
    if (!token.starts_with(m_wordPrefix))
        return false;
    token.remove_prefix(m_wordPrefix.size());
    const auto word = std::ranges::find(LEVEL_WORDS, token, &LevelWord::suffix);
    if (word == LEVEL_WORDS.end())
        return false;
    mask |= word->bit;
    return true;
}

bool ConfigScanner::readLevelWords(std::uint32_t& mask)
{
    do {
        if (!readLevelWord(mask))
            return false;
    } while (!isAtEndOfLine());
    return true;
}

void ConfigScanner::tellWrongLine(const char* facility) const
{
    Console::writeError(
        "syntax error at line " + std::to_string(m_lineNumber) + " of " + facility +
        " config file\n");
}

std::string_view ConfigScanner::readToken()
{
    if (isAtEndOfLine())
        return {};
    const std::size_t length = std::min(m_rest.find_first_of(BLANKS), m_rest.size());
    const std::string_view token = m_rest.substr(0, length);
    m_rest.remove_prefix(length);
    return token;
}
