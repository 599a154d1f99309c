#include "ElevatedEnvironment.h"

#include "ScopedEnvironment.h"

#include <ostream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

struct Variable {
    const char* name;
    const char* value;
    bool handedOn;

    friend void PrintTo(const Variable& row, std::ostream* out) { *out << row.name; }
};

class ElevatedEnvironmentTest : public testing::TestWithParam<Variable> {};

} // namespace

TEST_P(ElevatedEnvironmentTest, KnowsWhatTheElevatorHandsOn)
{
    EXPECT_EQ(ElevatedEnvironment::mayHold(GetParam().name, GetParam().value), GetParam().handedOn)
        << GetParam().name << "=" << GetParam().value;
}

INSTANTIATE_TEST_SUITE_P(
    Values, ElevatedEnvironmentTest,
    testing::Values(
        Variable{"DISPLAY", ":0", true}, Variable{"DISPLAY", "host:10.0", true},
        Variable{"DISPLAY", "/a/socket:0", false}, Variable{"DISPLAY", "a..b:0", false},
        Variable{"DISPLAY", ":0%n", false}, Variable{"XAUTHORITY", "", true},
        Variable{"XAUTHORITY", "/home/a/.Xauthority", true},
        Variable{"XAUTHORITY", ".Xauthority", false}, Variable{"XAUTHORITY", "/a/../b", false},
        Variable{"XAUTHORITY", "/a%20b", false}, Variable{"LC_ALL", "de_DE.UTF-8", true},
        Variable{"LC_ALL", "/a/locale", false}, Variable{"TERM", "xterm-256color", true},
        Variable{"TERM", "..", false}));

TEST(ElevatedEnvironment, NamesTheDispensableVariablesThatTheElevatorWouldRefuse)
{
    const ScopedEnvironment locale("LC_TIME", "/a/locale");
    const ScopedEnvironment language("LANGUAGE", "fr");
    const ScopedEnvironment terminal("TERM", "100%");
    const ScopedEnvironment display("DISPLAY", "/a/socket:0");

    EXPECT_THAT(
        ElevatedEnvironment::dispensable(), testing::UnorderedElementsAre("LC_TIME", "TERM"));
}

TEST(ElevatedEnvironment, CanDoWithoutAnyVariableOfTheLanguageAndTheTerminal)
{
    for (const char* const name :
         {"LANG", "LINGUAS", "LANGUAGE", "LC_COLLATE", "LC_CTYPE", "LC_MESSAGES", "LC_MONETARY",
          "LC_NUMERIC", "LC_TIME", "LC_ALL", "TERM", "COLORTERM"}) {
        const ScopedEnvironment refused(name, "/a/value");

        EXPECT_THAT(ElevatedEnvironment::dispensable(), testing::Contains(name));
    }
}
