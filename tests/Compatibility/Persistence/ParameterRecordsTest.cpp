#include "ParameterRecords.h"

#include <vector>

#include <gtest/gtest.h>

using namespace std::string_literals;

namespace {

const std::string recordA = "\x02\0\0\0a\0\x01\0\0\0A"s;
const std::string recordB = "\x02\0\0\0b\0\x02\0\0\0BB"s;

std::vector<std::string> namesOf(const t_BinaryParamMap& parameters)
{
    std::vector<std::string> names;
    for (const auto& [name, parameter] : parameters)
        names.push_back(name);
    return names;
}

} // namespace

TEST(ParameterRecords, OfNoBytesAreNone)
{
    EXPECT_TRUE(ParameterRecords::parse("").empty());
    EXPECT_EQ(ParameterRecords::toBytes({}), "");
}

TEST(ParameterRecords, ReadsRecordsUntilTheBytesAreUsedUp)
{
    const t_BinaryParamMap parameters = ParameterRecords::parse(recordB + recordA);

    EXPECT_EQ(namesOf(parameters), (std::vector<std::string>{"a", "b"}));
    EXPECT_EQ(parameters.at("a").getBufferSize(), 1);
    EXPECT_EQ(parameters.at("b").getBufferSize(), 2);
}

TEST(ParameterRecords, WritesRecordsSortedByName)
{
    const t_BinaryParamMap parameters = ParameterRecords::parse(recordB + recordA);

    EXPECT_EQ(ParameterRecords::toBytes(parameters), recordA + recordB);
}

TEST(ParameterRecords, TakesLaterDataOfNameThatStandsTwice)
{
    const t_BinaryParamMap parameters =
        ParameterRecords::parse(recordA + "\x02\0\0\0a\0\x02\0\0\0XY"s);

    EXPECT_EQ(ParameterRecords::toBytes(parameters), "\x02\0\0\0a\0\x02\0\0\0XY"s);
}

TEST(ParameterRecords, EndsAtBrokenRecordAndKeepsThoseBefore)
{
    const std::string negative = "\x02\0\0\0c\0\xFF\xFF\xFF\xFF"s;

    const t_BinaryParamMap parameters = ParameterRecords::parse(recordA + negative + recordB);

    EXPECT_EQ(namesOf(parameters), (std::vector<std::string>{"a"}));
}

TEST(ParameterRecords, TakesWhatItReadsOffTheFront)
{
    const std::string whole = recordA + recordB;
    const std::string broken = "\x02\0\0\0c\0\xFF\xFF\xFF\xFF"s + recordB;
    std::string_view all = whole;
    const std::string cut = recordA + broken;
    std::string_view some = cut;

    EXPECT_EQ(namesOf(ParameterRecords::takeAll(all)), (std::vector<std::string>{"a", "b"}));
    EXPECT_EQ(namesOf(ParameterRecords::takeAll(some)), (std::vector<std::string>{"a"}));

    EXPECT_EQ(all, "");
    EXPECT_EQ(some, broken);
}

TEST(ParameterRecords, EndsAtEveryTruncationOfTheLastRecord)
{
    for (std::size_t size = 0; size < recordB.size(); ++size) {
        const t_BinaryParamMap parameters =
            ParameterRecords::parse(recordA + recordB.substr(0, size));

        EXPECT_EQ(namesOf(parameters), (std::vector<std::string>{"a"})) << size;
    }
}
