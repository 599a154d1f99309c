#include "NamePatterns.h"

#include <ostream>
#include <string>

#include <gtest/gtest.h>

namespace {

struct Match {
    std::string pattern;
    std::string name;
    bool matches;

    friend void PrintTo(const Match& row, std::ostream* out) { *out << row.pattern; }
};

class NamePatternsKinds : public testing::TestWithParam<Match> {};

} // namespace

TEST_P(NamePatternsKinds, MatchTheWholeName)
{
    NamePatterns patterns;
    patterns.add(GetParam().pattern);

    EXPECT_EQ(patterns.match(GetParam().name), GetParam().matches)
        << GetParam().pattern << " against " << GetParam().name;
}

INSTANTIATE_TEST_SUITE_P(
    Everything, NamePatternsKinds,
    testing::Values(
        Match{"*", "Dictionary::getItem", true}, Match{"*", "", true}, Match{"**", "any", true},
        Match{"**", "", true}));

INSTANTIATE_TEST_SUITE_P(
    Beginning, NamePatternsKinds,
    testing::Values(
        Match{"Dict*", "Dictionary::getItem", true}, Match{"Dict*", "Dict", true},
        Match{"Dict*", "Dic", false}, Match{"Dict*", "MyDict", false},
        Match{"Dict*", "dict::x", false}));

INSTANTIATE_TEST_SUITE_P(
    End, NamePatternsKinds,
    testing::Values(
        Match{"*Item", "Dictionary::getItem", true}, Match{"*Item", "Item", true},
        Match{"*Item", "getItems", false}, Match{"*Item", "tem", false}));

INSTANTIATE_TEST_SUITE_P(
    Inside, NamePatternsKinds,
    testing::Values(
        Match{"*ary::*", "Dictionary::getItem", true}, Match{"*Dict*", "Dict", true},
        Match{"*Dict*", "Dict::x", true}, Match{"*Dict*", "MyDict", true},
        Match{"*Dict*", "Di::ct", false}));

INSTANTIATE_TEST_SUITE_P(
    Equal, NamePatternsKinds,
    testing::Values(
        Match{"Main", "Main", true}, Match{"Main", "Main2", false}, Match{"Main", "aMain", false},
        Match{"M*n", "Main", false}, Match{"M*n", "M*n", true}, Match{"", "", true},
        Match{"", "Main", false}, Match{"M?in", "Main", false}));

TEST(NamePatterns, EmptyListMatchesNothing)
{
    const NamePatterns patterns;

    EXPECT_FALSE(patterns.match("Main"));
    EXPECT_FALSE(patterns.match(""));
}

TEST(NamePatterns, OneMatchingPatternIsEnough)
{
    NamePatterns patterns;
    patterns.add("Main");
    patterns.add("th_*");

    EXPECT_TRUE(patterns.match("Main"));
    EXPECT_TRUE(patterns.match("th_12"));
    EXPECT_FALSE(patterns.match("other"));
}
