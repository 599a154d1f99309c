#pragma once

#include "ConfigScanner.h"

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>
#include <variant>

/// What a command takes behind its word.
namespace ConfigArgument {
struct None {};
using Name = const std::string&; ///< one run of characters that are not blank
using Number = std::int32_t;     ///< decimal digits, at most 2147483647
using Mask = std::uint32_t;      ///< one or more level words, each adding a bit
} // namespace ConfigArgument

/// The grammar that the diagnostics configuration files share: each line is empty, a comment, or
/// one command with its argument. A subclass gives the table of the commands.
///
/// A command applies to the published facility at the end of its line, when the whole line is known
/// to be right; without one it has no effect. The first wrong line ends the parse with one text on
/// the standard error: nothing of that line applies, the commands before it stay applied. One
/// thread uses a parser; the scanner is the caller's.
template<typename Facility>
class ConfigParser {
public:
    /// A row of the table: the word, and what it does with the argument that it takes behind it.
    struct Command {
        template<typename Argument>
        using Action = void (*)(Facility& facility, Argument argument);

        std::string_view word;
        std::variant<
            Action<ConfigArgument::None>, Action<ConfigArgument::Name>,
            Action<ConfigArgument::Number>, Action<ConfigArgument::Mask>>
            action;
    };

    virtual ~ConfigParser() = default;

    ConfigParser(const ConfigParser&) = delete;
    ConfigParser& operator=(const ConfigParser&) = delete;

    /// Reads the scanner to its end; false when a line is wrong.
    bool parse()
    {
        while (m_scanner.nextLine()) {
            if (!parseLine()) {
                m_scanner.tellWrongLine(m_facilityName);
                return false;
            }
        }
        return true;
    }

protected:
    /// `facilityName` names the owner of the file in the error text; the commands must outlive the
    /// parser.
    ConfigParser(
        ConfigScanner& scanner, const char* facilityName, std::span<const Command> commands)
        : m_scanner(scanner), m_facilityName(facilityName), m_commands(commands)
    {
    }

private:
    /// Whether the command acts now; its line must be right in any case.
    virtual bool acts(const Command& /*command*/, Facility& /*facility*/) const { return true; }

    bool parseLine()
    {
        if (m_scanner.isAtEndOfLine())
            return true;
        const Command* const command = m_scanner.readKeyword(m_commands);
        return command != nullptr &&
               std::visit(
                   [&](const auto action) { return parseRest(*command, action); }, command->action);
    }

    template<typename Argument>
    bool parseRest(const Command& command, void (*action)(Facility&, Argument))
    {
        std::remove_cvref_t<Argument> argument{};
        if (!read(argument) || !m_scanner.isAtEndOfLine())
            return false;
        Facility* const facility = Facility::GetInstance();
        if (facility != nullptr && acts(command, *facility))
            action(*facility, argument);
        return true;
    }

    bool read(ConfigArgument::None& /*argument*/) { return true; }
    bool read(std::string& name) { return m_scanner.readName(name); }
    bool read(ConfigArgument::Number& number) { return m_scanner.readNumber(number); }
    bool read(ConfigArgument::Mask& mask) { return m_scanner.readLevelWords(mask); }

    ConfigScanner& m_scanner;
    const char* m_facilityName;
    std::span<const Command> m_commands;
};
