#include "ParameterText.h"

#include <algorithm>

#include <gtest/gtest.h>

namespace {

using Lines = std::vector<std::string>;

} // namespace

TEST(ParameterText, HasNothingOfAnEmptyFile)
{
    const ParameterText text = ParameterText::parse("");

    EXPECT_TRUE(text.parameters.empty());
    EXPECT_TRUE(text.otherLines.empty());
}

TEST(ParameterText, SeparatesAtTheFirstEqualsSign)
{
    const ParameterText text = ParameterText::parse("a=1\nb==2=\n");

    EXPECT_EQ(text.parameters, (t_paramMap{{"a", "1"}, {"b", "=2="}}));
}

TEST(ParameterText, TakesEveryOtherByteAsItIs)
{
    using namespace std::string_literals;
    const ParameterText text = ParameterText::parse(" a =\tv\r\n\xFF=\0z\n"s);

    EXPECT_EQ(text.parameters, (t_paramMap{{" a ", "\tv\r"}, {"\xFF", "\0z"s}}));
}

TEST(ParameterText, ReadsEmptyNameAndEmptyValue)
{
    const ParameterText text = ParameterText::parse("=1\na=\n");

    EXPECT_EQ(text.parameters, (t_paramMap{{"", "1"}, {"a", ""}}));
}

TEST(ParameterText, CountsLastLineWithoutLineFeed)
{
    const ParameterText text = ParameterText::parse("a=1\nb=2");

    EXPECT_EQ(text.parameters, (t_paramMap{{"a", "1"}, {"b", "2"}}));
    EXPECT_TRUE(text.otherLines.empty());
}

TEST(ParameterText, TakesNoEntryBehindTheLastLineFeed)
{
    const ParameterText text = ParameterText::parse("a=1\n");

    EXPECT_EQ(text.parameters, (t_paramMap{{"a", "1"}}));
    EXPECT_TRUE(text.otherLines.empty());
}

TEST(ParameterText, TakesLaterValueOfNameThatStandsTwice)
{
    const ParameterText text = ParameterText::parse("a=1\na=2\n");

    EXPECT_EQ(text.parameters, (t_paramMap{{"a", "2"}}));
}

TEST(ParameterText, KeepsLinesWithoutEqualsSign)
{
    const ParameterText text = ParameterText::parse("# a note\n\na=1\nstray");

    EXPECT_EQ(text.parameters, (t_paramMap{{"a", "1"}}));
    EXPECT_EQ(text.otherLines, (Lines{"# a note", "", "stray"}));
}

TEST(ParameterText, WritesNothingForNoParameters)
{
    EXPECT_EQ(ParameterText().toText(), "");
}

TEST(ParameterText, WritesParametersInByteOrderOfTheirNames)
{
    ParameterText text;
    text.parameters = {{"b", "1"}, {"a", "2"}, {"B", "3"}, {"\xC3\xA9", "4"}, {"ab", "x=y"}};

    EXPECT_EQ(text.toText(), "B=3\na=2\nab=x=y\nb=1\n\xC3\xA9=4\n");
}

TEST(ParameterText, WritesOtherLinesAsTheyStandAheadOfTheParameters)
{
    const ParameterText text = ParameterText::parse("b=2\n# a note\n\na=1\nstray");

    EXPECT_EQ(text.toText(), "# a note\n\nstray\na=1\nb=2\n");
}

TEST(ParameterText, ReadsBackWhatItWrites)
{
    const ParameterText text = ParameterText::parse("stray\nb=2\n=\na==\n");

    const ParameterText again = ParameterText::parse(text.toText());

    EXPECT_EQ(again.parameters, text.parameters);
    EXPECT_EQ(again.otherLines, text.otherLines);
}

TEST(ParameterText, HoldsOnlyWhatALineCanHold)
{
    EXPECT_TRUE(ParameterText::isStorable("name", "value"));
    EXPECT_TRUE(ParameterText::isStorable("name", ""));
    EXPECT_TRUE(ParameterText::isStorable("name", "a=b"));
    EXPECT_FALSE(ParameterText::isStorable("na=me", "value"));
    EXPECT_FALSE(ParameterText::isStorable("na\nme", "value"));
    EXPECT_FALSE(ParameterText::isStorable("name", "val\nue"));
}
