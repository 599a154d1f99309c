#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

/// The lexical rules that the diagnostics configuration files share, applied to a whole file's
/// bytes, line by line. A subclass gives the prefix of the level words.
///
/// A line counts only when it ends in a line feed: what stands behind the last one is dropped.
/// Blanks and tabs separate tokens; every other byte, a carriage return included, belongs to one. A
/// NUL byte spoils its token. The caller asks for the token that it expects next and gets a failure
/// when something else stands there; nothing is thrown. One thread uses a scanner.
class ConfigScanner {
public:
    virtual ~ConfigScanner() = default;

    ConfigScanner(const ConfigScanner&) = delete;
    ConfigScanner& operator=(const ConfigScanner&) = delete;

    /// Goes to the next line; false when there is no further complete one. A comment, "#" as the
    /// line's very first character, counts as an empty line.
    bool nextLine();

    /// The number of the current line; the first line is 1.
    int lineNumber() const { return m_lineNumber; }

    /// Whether nothing but blanks is left on the line.
    bool isAtEndOfLine();

    /// The row whose word stands next, exact to the case; null when another text does.
    template<typename Row>
    const Row* readKeyword(std::span<const Row> rows)
    {
        const auto row = std::ranges::find(rows, readToken(), &Row::word);
        return row == rows.end() ? nullptr : &*row;
    }

    bool readName(std::string& name);
    bool readNumber(std::int32_t& number);
    /// Adds the bit of the level word that stands next to the mask.
    bool readLevelWord(std::uint32_t& mask);
    /// Adds the bits of the level words, one at least, that are left on the line.
    bool readLevelWords(std::uint32_t& mask);

    /// Tells the current line on the standard error as wrong in the file of the facility ("log").
    void tellWrongLine(const char* facility) const;

protected:
    /// The prefix ("LOG_", "TRACE_") must outlive the scanner.
    ConfigScanner(std::string content, std::string_view wordPrefix);

    /// The whole content of a configuration file, reached through links too. One that cannot be
    /// opened, or is no regular file, gives a warning on the standard error, in which `facility`
    /// names the owner of the file, and an empty content.
    static std::string readFile(const char* fileName, const char* facility);

private:
    std::string_view readToken();

    std::string m_content;
    std::string_view m_wordPrefix;
    std::size_t m_nextLine = 0;
    std::string_view m_rest; ///< of the current line
    int m_lineNumber = 0;
};
