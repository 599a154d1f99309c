#include "DedicatedAPNConfiguration.h"

#include "TextAccessor.h"

#include <gtest/gtest.h>

namespace {

/// A dedicated APN with a leaf and both sub-sections.
Dictionary fullSection()
{
    Dictionary dictionary("DedicatedAPN");
    dictionary.addValue("APN", "apn.example");
    Dictionary proxy = ProxyConfiguration::makeDictionary("proxy.example", "8080");
    dictionary.setItem("Proxy", proxy);
    Dictionary vpn = VPNConfiguration::makeDictionary("PrivateVPN", true, "a", "b", "c", "d");
    dictionary.setItem("PrivateVPN", vpn);
    return dictionary;
}

class DedicatedAPNConfigurationTest : public testing::Test {
protected:
    Dictionary dictionary = fullSection();
    DedicatedAPNConfiguration section{&dictionary};
    Dictionary& held = section;
};

using Accessor = TextAccessor<DedicatedAPNConfiguration>;
using DedicatedAPNConfigurationText = TextAccessorTest<DedicatedAPNConfiguration>;

} // namespace

TEST_P(DedicatedAPNConfigurationText, IsEmptyWhenMissing)
{
    expectEmptyWhenMissing();
}

TEST_P(DedicatedAPNConfigurationText, SetterCreatesKeyThenReplacesItsValue)
{
    expectSetterToCreateKeyThenReplaceItsValue();
}

INSTANTIATE_TEST_SUITE_P(
    Keys, DedicatedAPNConfigurationText,
    testing::Values(
        Accessor{"APN", &DedicatedAPNConfiguration::getAPN, &DedicatedAPNConfiguration::setAPN},
        Accessor{"DNS1", &DedicatedAPNConfiguration::getDNS1, &DedicatedAPNConfiguration::setDNS1},
        Accessor{"DNS2", &DedicatedAPNConfiguration::getDNS2, &DedicatedAPNConfiguration::setDNS2},
        Accessor{
            "Login", &DedicatedAPNConfiguration::getLogin, &DedicatedAPNConfiguration::setLogin},
        Accessor{
            "Password", &DedicatedAPNConfiguration::getPassword,
            &DedicatedAPNConfiguration::setPassword}),
    [](const auto& test) { return std::string(test.param.key); });

TEST_F(DedicatedAPNConfigurationTest, CredentialsAreUserSpecificByTheExactTextOnly)
{
    EXPECT_FALSE(section.isUserSpecificCredentials());
    for (const char* text : {"TRUE", "yes", "false", ""}) {
        held.addValue("UserSpecificCredentials", text);
        EXPECT_FALSE(section.isUserSpecificCredentials()) << text;
    }

    held.addValue("UserSpecificCredentials", "true");
    EXPECT_TRUE(section.isUserSpecificCredentials());
}

TEST_F(DedicatedAPNConfigurationTest, EnablingUserSpecificCredentialsWritesTrueAndFalse)
{
    section.enableUserSpecificCredentials(true);
    EXPECT_STREQ(held.getValue("UserSpecificCredentials"), "true");

    section.enableUserSpecificCredentials(false);
    EXPECT_STREQ(held.getValue("UserSpecificCredentials"), "false");
}

TEST_F(DedicatedAPNConfigurationTest, TakesItsSubSectionsOutOfTheLeafDictionary)
{
    ASSERT_NE(section.getProxyConfiguration(), nullptr);
    ASSERT_NE(section.getPrivateVPN(), nullptr);
    EXPECT_EQ(section.getProxyConfiguration()->getAddress(), "proxy.example");
    EXPECT_EQ(section.getProxyConfiguration()->getport(), "8080");
    EXPECT_EQ(section.getPrivateVPN()->getStartCmdLine(), "a");
    EXPECT_EQ(
        held.marshall(""), "<dict>\n"
                           "\t<key>APN</key>\n"
                           "\t<string>apn.example</string>\n"
                           "</dict>\n");
}

TEST_F(DedicatedAPNConfigurationTest, LeavesTheDictionaryItWasMadeFromAlone)
{
    EXPECT_TRUE(dictionary.hasKey("Proxy"));
    EXPECT_TRUE(dictionary.hasKey("PrivateVPN"));
}

TEST_F(DedicatedAPNConfigurationTest, WithoutSubSectionsHasNone)
{
    Dictionary leavesOnly("DedicatedAPN");
    const DedicatedAPNConfiguration plain(&leavesOnly);

    EXPECT_EQ(plain.getProxyConfiguration(), nullptr);
    EXPECT_EQ(plain.getPrivateVPN(), nullptr);
    EXPECT_TRUE(plain.getDictionary()->equals(leavesOnly));
}

TEST_F(DedicatedAPNConfigurationTest, TakesLeafInASubSectionsPlaceAsAbsentAndKeepsIt)
{
    Dictionary edited("DedicatedAPN");
    edited.addValue("Proxy", "text");
    edited.addValue("PrivateVPN", 5);
    const DedicatedAPNConfiguration plain(&edited);

    EXPECT_EQ(plain.getProxyConfiguration(), nullptr);
    EXPECT_EQ(plain.getPrivateVPN(), nullptr);
    EXPECT_TRUE(plain.getDictionary()->equals(edited));
}

TEST_F(DedicatedAPNConfigurationTest, JoinsItsSubSectionsAgain)
{
    const std::unique_ptr<Dictionary> whole = section.getDictionary();

    EXPECT_EQ(whole->getName(), "DedicatedAPN");
    EXPECT_TRUE(whole->equals(dictionary));
    EXPECT_FALSE(held.hasKey("Proxy"));
    EXPECT_FALSE(held.hasKey("PrivateVPN"));
}

TEST_F(DedicatedAPNConfigurationTest, JoinsItsProxyLast)
{
    Dictionary vpn("Same");
    vpn.addValue("StartCommandLine", "a");
    Dictionary proxy("Same");
    proxy.addValue("Port", "8080");
    dictionary.setItem("PrivateVPN", vpn);
    dictionary.setItem("Proxy", proxy);

    const auto whole = DedicatedAPNConfiguration(&dictionary).getDictionary();

    EXPECT_STREQ(whole->getValue("Same.Port"), "8080");
    EXPECT_EQ(whole->getValue("Same.StartCommandLine"), nullptr);
}

TEST_F(DedicatedAPNConfigurationTest, JoinedTreeHasCopiesOfItsOwn)
{
    const std::unique_ptr<Dictionary> whole = section.getDictionary();

    section.setAPN("changed");
    section.getProxyConfiguration()->setport("changed");
    section.getPrivateVPN()->setStopArgs("changed");

    EXPECT_TRUE(whole->equals(dictionary));
    EXPECT_STREQ(section.getDictionary()->getValue("Proxy.Port"), "changed");
    EXPECT_STREQ(section.getDictionary()->getValue("PrivateVPN.StopArguments"), "changed");
}

TEST_F(DedicatedAPNConfigurationTest, SetPrivateVpnReplacesTheSubSection)
{
    section.setPrivateVpn(false, "1", "2", "3", "4");

    ASSERT_NE(section.getPrivateVPN(), nullptr);
    Dictionary& vpn = *section.getPrivateVPN();
    EXPECT_EQ(vpn.getName(), "PrivateVPN");
    EXPECT_EQ(
        vpn.marshall(""), "<dict>\n"
                          "\t<key>Activated</key>\n"
                          "\t<string>false</string>\n"
                          "\t<key>StartArguments</key>\n"
                          "\t<string>2</string>\n"
                          "\t<key>StartCommandLine</key>\n"
                          "\t<string>1</string>\n"
                          "\t<key>StopArguments</key>\n"
                          "\t<string>4</string>\n"
                          "\t<key>StopCommandLine</key>\n"
                          "\t<string>3</string>\n"
                          "</dict>\n");
    EXPECT_FALSE(held.hasKey("PrivateVPN"));
}

TEST_F(DedicatedAPNConfigurationTest, CopyHasSubSectionsOfItsOwn)
{
    const DedicatedAPNConfiguration copy(section);

    section.getProxyConfiguration()->setport("changed");
    section.getPrivateVPN()->setStopArgs("changed");
    section.setAPN("changed");

    EXPECT_TRUE(copy.getDictionary()->equals(dictionary));
}

TEST_F(DedicatedAPNConfigurationTest, AssignmentCopiesSubSections)
{
    Dictionary other("Other");
    DedicatedAPNConfiguration target(&other);

    target = section;
    section.getProxyConfiguration()->setport("changed");
    section.getPrivateVPN()->setStopArgs("changed");

    EXPECT_TRUE(target.getDictionary()->equals(dictionary));
}

TEST_F(DedicatedAPNConfigurationTest, AssignmentOfSectionWithoutSubSectionsRemovesThem)
{
    Dictionary leavesOnly("DedicatedAPN");
    const DedicatedAPNConfiguration plain(&leavesOnly);

    section = plain;

    EXPECT_EQ(section.getProxyConfiguration(), nullptr);
    EXPECT_EQ(section.getPrivateVPN(), nullptr);
}

TEST_F(DedicatedAPNConfigurationTest, SelfAssignmentLosesTheLeavesAndKeepsTheSubSections)
{
    const DedicatedAPNConfiguration& same = section;

    section = same;

    EXPECT_EQ(
        section.getDictionary()->marshall(""), "<dict>\n"
                                               "\t<key>PrivateVPN</key>\n"
                                               "\t<dict>\n"
                                               "\t\t<key>Activated</key>\n"
                                               "\t\t<string>true</string>\n"
                                               "\t\t<key>StartArguments</key>\n"
                                               "\t\t<string>b</string>\n"
                                               "\t\t<key>StartCommandLine</key>\n"
                                               "\t\t<string>a</string>\n"
                                               "\t\t<key>StopArguments</key>\n"
                                               "\t\t<string>d</string>\n"
                                               "\t\t<key>StopCommandLine</key>\n"
                                               "\t\t<string>c</string>\n"
                                               "\t</dict>\n"
                                               "\t<key>Proxy</key>\n"
                                               "\t<dict>\n"
                                               "\t\t<key>Address</key>\n"
                                               "\t\t<string>proxy.example</string>\n"
                                               "\t\t<key>Port</key>\n"
                                               "\t\t<string>8080</string>\n"
                                               "\t</dict>\n"
                                               "</dict>\n");
}

TEST(DedicatedAPNConfiguration, MakesDictionaryOfItsSixKeysAndItsProxy)
{
    Dictionary dictionary = DedicatedAPNConfiguration::makeDictionary(
        "apn", true, "login", "password", "1", "2", "proxy", "80");

    EXPECT_EQ(dictionary.getName(), "DedicatedAPN");
    EXPECT_EQ(
        dictionary.marshall(""), "<dict>\n"
                                 "\t<key>APN</key>\n"
                                 "\t<string>apn</string>\n"
                                 "\t<key>DNS1</key>\n"
                                 "\t<string>1</string>\n"
                                 "\t<key>DNS2</key>\n"
                                 "\t<string>2</string>\n"
                                 "\t<key>Login</key>\n"
                                 "\t<string>login</string>\n"
                                 "\t<key>Password</key>\n"
                                 "\t<string>password</string>\n"
                                 "\t<key>Proxy</key>\n"
                                 "\t<dict>\n"
                                 "\t\t<key>Address</key>\n"
                                 "\t\t<string>proxy</string>\n"
                                 "\t\t<key>Port</key>\n"
                                 "\t\t<string>80</string>\n"
                                 "\t</dict>\n"
                                 "\t<key>UserSpecificCredentials</key>\n"
                                 "\t<string>true</string>\n"
                                 "</dict>\n");
}
