#include "MonitoringConfiguration.h"

#include <ostream>

#include <gtest/gtest.h>

namespace {

class MonitoringConfigurationTest : public testing::Test {
protected:
    Dictionary empty{"Monitoring"};
    MonitoringConfiguration section{&empty};
    Dictionary& held = section;
};

struct TypeCode {
    const char* text;
    int code;

    friend void PrintTo(const TypeCode& row, std::ostream* out) { *out << row.text; }
};

class MonitoringType : public testing::TestWithParam<TypeCode> {};

} // namespace

TEST_P(MonitoringType, ReadsAsItsNumber)
{
    Dictionary dictionary;
    MonitoringConfiguration section(&dictionary);

    section.setType(GetParam().text);

    EXPECT_EQ(section.getType(), GetParam().code);
    EXPECT_STREQ(static_cast<Dictionary&>(section).getValue("Type"), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(
    Texts, MonitoringType,
    testing::Values(
        TypeCode{"IP", 1}, TypeCode{"DNS", 2}, TypeCode{"NONE", 0}, TypeCode{"HTTP", 0},
        TypeCode{"", 0}, TypeCode{"ip", 0}, TypeCode{"IP ", 0}, TypeCode{"anything", 0}));

TEST_F(MonitoringConfigurationTest, TypeIsZeroWithoutTheKey)
{
    EXPECT_EQ(section.getType(), 0);
}

TEST_F(MonitoringConfigurationTest, AddressIsEmptyWithoutTheKey)
{
    EXPECT_EQ(section.getAddress(), "");
}

TEST_F(MonitoringConfigurationTest, SetAddressCreatesKeyThenReplacesItsValue)
{
    section.setAddress("10.0.0.1");
    const Item* const entry = held.getFirstItem();
    section.setAddress("10.0.0.2");

    EXPECT_EQ(section.getAddress(), "10.0.0.2");
    EXPECT_STREQ(held.getValue("Address"), "10.0.0.2");
    EXPECT_EQ(held.getFirstItem(), entry);
}

TEST_F(MonitoringConfigurationTest, IsActivatedByTheExactTextOnly)
{
    EXPECT_FALSE(section.isActivated());
    for (const char* text : {"TRUE", "yes", "false", ""}) {
        held.addValue("Activated", text);
        EXPECT_FALSE(section.isActivated()) << text;
    }

    held.addValue("Activated", "true");
    EXPECT_TRUE(section.isActivated());
}

TEST_F(MonitoringConfigurationTest, SetActivatedWritesTrueAndFalse)
{
    section.setActivated(true);
    EXPECT_STREQ(held.getValue("Activated"), "true");

    section.setActivated(false);
    EXPECT_STREQ(held.getValue("Activated"), "false");
}

TEST(MonitoringConfiguration, MakesDictionaryOfItsThreeKeys)
{
    Dictionary dictionary = MonitoringConfiguration::makeDictionary(false, "IP", "10.0.0.1");

    EXPECT_EQ(dictionary.getName(), "Monitoring");
    EXPECT_EQ(
        dictionary.marshall(""), "<dict>\n"
                                 "\t<key>Activated</key>\n"
                                 "\t<string>false</string>\n"
                                 "\t<key>Address</key>\n"
                                 "\t<string>10.0.0.1</string>\n"
                                 "\t<key>Type</key>\n"
                                 "\t<string>IP</string>\n"
                                 "</dict>\n");
}
