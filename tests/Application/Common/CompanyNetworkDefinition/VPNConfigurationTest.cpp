#include "VPNConfiguration.h"

#include "TextAccessor.h"

#include <gtest/gtest.h>

namespace {

class VPNConfigurationTest : public testing::Test {
protected:
    Dictionary empty{"PublicVPN"};
    VPNConfiguration section{&empty};
    Dictionary& held = section;
};

using Accessor = TextAccessor<VPNConfiguration>;
using VPNConfigurationText = TextAccessorTest<VPNConfiguration>;

} // namespace

TEST_P(VPNConfigurationText, IsEmptyWhenMissing)
{
    expectEmptyWhenMissing();
}

TEST_P(VPNConfigurationText, SetterCreatesKeyThenReplacesItsValue)
{
    expectSetterToCreateKeyThenReplaceItsValue();
}

INSTANTIATE_TEST_SUITE_P(
    Keys, VPNConfigurationText,
    testing::Values(
        Accessor{
            "StartCommandLine", &VPNConfiguration::getStartCmdLine,
            &VPNConfiguration::setStartCmdLine},
        Accessor{
            "StartArguments", &VPNConfiguration::getStartArgs, &VPNConfiguration::setStartArgs},
        Accessor{
            "StopCommandLine", &VPNConfiguration::getStopCmdLine,
            &VPNConfiguration::setStopCmdLine},
        Accessor{"StopArguments", &VPNConfiguration::getStopArgs, &VPNConfiguration::setStopArgs}),
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
