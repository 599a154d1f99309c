#include "ProxyConfiguration.h"

#include <gtest/gtest.h>

namespace {

class ProxyConfigurationTest : public testing::Test {
protected:
    Dictionary empty{"Proxy"};
    ProxyConfiguration section{&empty};
    Dictionary& held = section;
};

} // namespace

TEST_F(ProxyConfigurationTest, IsEmptyWithoutTheKeys)
{
    EXPECT_EQ(section.getAddress(), "");
    EXPECT_EQ(section.getport(), "");
}

TEST_F(ProxyConfigurationTest, SetAddressCreatesKeyThenReplacesItsValue)
{
    section.setAddress("first");
    section.setAddress("second");

    EXPECT_EQ(section.getAddress(), "second");
    EXPECT_STREQ(held.getValue("Address"), "second");
    EXPECT_EQ(section.getport(), "");
}

TEST_F(ProxyConfigurationTest, SetPortCreatesKeyThenReplacesItsValue)
{
    section.setport("80");
    section.setport("8080");

    EXPECT_EQ(section.getport(), "8080");
    EXPECT_STREQ(held.getValue("Port"), "8080");
    EXPECT_EQ(section.getAddress(), "");
}

TEST(ProxyConfiguration, MakesDictionaryOfItsTwoKeys)
{
    Dictionary dictionary = ProxyConfiguration::makeDictionary("proxy", "0");

    EXPECT_EQ(dictionary.getName(), "Proxy");
    EXPECT_EQ(
        dictionary.marshall(""), "<dict>\n"
                                 "\t<key>Address</key>\n"
                                 "\t<string>proxy</string>\n"
                                 "\t<key>Port</key>\n"
                                 "\t<string>0</string>\n"
                                 "</dict>\n");
}
