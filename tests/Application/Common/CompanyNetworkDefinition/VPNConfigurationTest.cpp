#include "VPNConfiguration.h"

#include <gtest/gtest.h>

namespace {

class VPNConfigurationTest : public testing::Test {
protected:
    Dictionary empty{"PublicVPN"};
    VPNConfiguration section{&empty};
    Dictionary& held = section;
};

struct TextAccessor {
    const char* key;
    std::string (VPNConfiguration::*get)() const;
    void (VPNConfiguration::*set)(const std::string&);
};

class VPNConfigurationText : public testing::TestWithParam<TextAccessor> {
protected:
    Dictionary empty{"PublicVPN"};
    VPNConfiguration section{&empty};
    Dictionary& held = section;
};

} // namespace

TEST_P(VPNConfigurationText, IsEmptyWhenMissing)
{
    EXPECT_EQ((section.*GetParam().get)(), "");
}

TEST_P(VPNConfigurationText, SetterCreatesKeyThenReplacesItsValue)
{
    (section.*GetParam().set)("first");
    const Item* const entry = held.getFirstItem();
    (section.*GetParam().set)("second");

    EXPECT_EQ((section.*GetParam().get)(), "second");
    EXPECT_STREQ(held.getValue(GetParam().key), "second");
    EXPECT_EQ(held.getFirstItem(), entry);
    held.removeItem(GetParam().key);
    EXPECT_EQ(held.getFirstItem(), nullptr);
}

INSTANTIATE_TEST_SUITE_P(
    Keys, VPNConfigurationText,
    testing::Values(
        TextAccessor{
            "StartCommandLine", &VPNConfiguration::getStartCmdLine,
            &VPNConfiguration::setStartCmdLine},
        TextAccessor{
            "StartArguments", &VPNConfiguration::getStartArgs, &VPNConfiguration::setStartArgs},
        TextAccessor{
            "StopCommandLine", &VPNConfiguration::getStopCmdLine,
            &VPNConfiguration::setStopCmdLine},
        TextAccessor{
            "StopArguments", &VPNConfiguration::getStopArgs, &VPNConfiguration::setStopArgs}),
    [](const auto& test) { return std::string(test.param.key); });

TEST_F(VPNConfigurationTest, IsNotActivatedWithoutTheKey)
{
    EXPECT_FALSE(section.isActivated());
}

TEST_F(VPNConfigurationTest, IsActivatedByTheExactTextOnly)
{
    for (const char* text : {"TRUE", "True", "yes", "1", "true ", "false", ""}) {
        held.addValue("Activated", text);
        EXPECT_FALSE(section.isActivated()) << text;
    }

    held.addValue("Activated", "true");
    EXPECT_TRUE(section.isActivated());
}

TEST_F(VPNConfigurationTest, SetActivatedWritesTrueAndFalse)
{
    section.setActivated(true);
    EXPECT_STREQ(held.getValue("Activated"), "true");

    section.setActivated(false);
    EXPECT_STREQ(held.getValue("Activated"), "false");
}

TEST(VPNConfiguration, MakesDictionaryOfTheFiveKeys)
{
    Dictionary dictionary = VPNConfiguration::makeDictionary("Any", true, "a", "b", "c", "d");

    EXPECT_EQ(dictionary.getName(), "Any");
    EXPECT_EQ(
        dictionary.marshall(""), "<dict>\n"
                                 "\t<key>Activated</key>\n"
                                 "\t<string>true</string>\n"
                                 "\t<key>StartArguments</key>\n"
                                 "\t<string>b</string>\n"
                                 "\t<key>StartCommandLine</key>\n"
                                 "\t<string>a</string>\n"
                                 "\t<key>StopArguments</key>\n"
                                 "\t<string>d</string>\n"
                                 "\t<key>StopCommandLine</key>\n"
                                 "\t<string>c</string>\n"
                                 "</dict>\n");
}
