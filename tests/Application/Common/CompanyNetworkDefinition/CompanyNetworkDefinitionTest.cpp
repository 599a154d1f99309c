#include "CompanyNetworkDefinition.h"

#include "BlockedViolations.h"
#include "CrashReport.h"
#include "VirtualSlot.h"

#include <cstdio>
#include <functional>
#include <memory>
#include <ostream>
#include <string>
#include <type_traits>
#include <vector>

#include <gtest/gtest.h>

namespace {

/// A network with every section and every key, and one that nobody knows in each section.
Dictionary fullNetwork()
{
    Dictionary network("Company7");
    network.addValue("Name", "Head office");
    Dictionary monitoring = MonitoringConfiguration::makeDictionary(true, "DNS", "10.0.0.1");
    network.setItem("Monitoring", monitoring);
    Dictionary vpn = VPNConfiguration::makeDictionary("PublicVPN", true, "a", "b", "c", "d");
    network.setItem("PublicVPN", vpn);
    Dictionary apn("DedicatedAPN");
    network.setItem("DedicatedAPN", apn);
    network.addValue("DedicatedAPN.APN", "apn.example");
    network.addValue("DedicatedAPN.UserSpecificCredentials", "true");
    network.addValue("DedicatedAPN.Login", "login");
    network.addValue("DedicatedAPN.Password", "password");
    network.addValue("DedicatedAPN.DNS1", "1.1.1.1");
    network.addValue("DedicatedAPN.DNS2", "2.2.2.2");
    Dictionary proxy = ProxyConfiguration::makeDictionary("proxy.example", "8080");
    network.setItem("DedicatedAPN.Proxy", proxy);
    Dictionary privateVpn =
        VPNConfiguration::makeDictionary("PrivateVPN", false, "e", "f", "g", "h");
    network.setItem("DedicatedAPN.PrivateVPN", privateVpn);
    for (const char* section :
         {"Monitoring", "PublicVPN", "DedicatedAPN", "DedicatedAPN.Proxy",
          "DedicatedAPN.PrivateVPN"})
        network.addValue(std::string(section) + ".Stray", "kept until the section is updated");
    return network;
}

Dictionary namedNetwork()
{
    Dictionary network("Company1");
    network.addValue("Name", "Plain");
    return network;
}

class FullDefinition : public testing::Test {
protected:
    Dictionary network = fullNetwork();
    CompanyNetworkDefinition definition{&network};
};

/// A network with nothing but a display name.
class PlainDefinition : public testing::Test {
protected:
    Dictionary network = namedNetwork();
    CompanyNetworkDefinition definition{&network};
};

/// Tells what the definition holds on the standard error, ahead of the report.
void tell(const CompanyNetworkDefinition& definition)
{
    const std::string name = definition.getDictionnaryName();
    std::fputs((name + definition.getDictionary()->marshall(":")).c_str(), stderr);
}

void tellWhatNoDictionaryMakes()
{
    const BlockedViolations blocked;
    const CompanyNetworkDefinition definition(static_cast<Dictionary*>(nullptr));
    tell(definition);
}

void tellWhatIsLeftBehind(
    CompanyNetworkDefinition& definition, void (*change)(CompanyNetworkDefinition&))
{
    const BlockedViolations blocked;
    change(definition);
    tell(definition);
}

} // namespace

TEST_F(FullDefinition, ReadsItsNames)
{
    EXPECT_EQ(definition.getDictionnaryName(), "Company7");
    EXPECT_EQ(definition.getCompanyName(), "Head office");
}

TEST_F(FullDefinition, ReadsItsSections)
{
    ASSERT_NE(definition.getPublicVPN(), nullptr);
    ASSERT_NE(definition.getMonitoringConfiguration(), nullptr);
    EXPECT_EQ(definition.getPublicVPN()->getStartCmdLine(), "a");
    EXPECT_EQ(definition.getMonitoringConfiguration()->getType(), 2);
    EXPECT_EQ(definition.getMonitoringConfiguration()->getAddress(), "10.0.0.1");
}

TEST_F(FullDefinition, ReadsItsDedicatedAPN)
{
    EXPECT_TRUE(definition.hasDedicatedAPN());
    EXPECT_TRUE(definition.isDedicatedApnWithUserSpecificCredentials());
    EXPECT_EQ(definition.getDedicatedAPN(), "apn.example");
    EXPECT_EQ(definition.getDedicatedAPNLogin(), "login");
    EXPECT_EQ(definition.getDedicatedAPNPassword(), "password");
    EXPECT_EQ(definition.getDedicatedAPNDNS1(), "1.1.1.1");
    EXPECT_EQ(definition.getDedicatedAPNDNS2(), "2.2.2.2");
    ASSERT_NE(definition.getDedicatedAPNPrivateVPN(), nullptr);
    EXPECT_EQ(definition.getDedicatedAPNPrivateVPN()->getStopArgs(), "h");
    ASSERT_NE(definition.getDedicatedAPNProxyConfiguration(), nullptr);
    EXPECT_EQ(definition.getDedicatedAPNProxyConfiguration()->getport(), "8080");
}

TEST_F(FullDefinition, GivesBackTheDictionaryItWasReadFrom)
{
    const std::unique_ptr<Dictionary> dictionary = definition.getDictionary();

    EXPECT_EQ(dictionary->getName(), "Company7");
    EXPECT_TRUE(dictionary->equals(network));
}

TEST_F(FullDefinition, DoesNotSeeLaterChangesOfItsDictionary)
{
    network.addValue("Name", "changed");
    network.addValue("PublicVPN.StartCommandLine", "changed");

    EXPECT_EQ(definition.getCompanyName(), "Head office");
    EXPECT_EQ(definition.getPublicVPN()->getStartCmdLine(), "a");
}

TEST_F(FullDefinition, CopyHasSectionsOfItsOwn)
{
    const CompanyNetworkDefinition copy(definition);

    definition.getPublicVPN()->setStartCmdLine("changed");
    definition.getMonitoringConfiguration()->setAddress("changed");
    definition.setDedicatedAPNLogin("changed");
    definition.getDedicatedAPNPrivateVPN()->setStopArgs("changed");
    definition.getDedicatedAPNProxyConfiguration()->setport("changed");

    EXPECT_EQ(copy.getDictionnaryName(), "Company7");
    EXPECT_TRUE(copy.getDictionary()->equals(network));
}

TEST_F(FullDefinition, CopyUnderAnotherNameKeepsTheDisplayName)
{
    const CompanyNetworkDefinition copy(definition, "Company9");

    EXPECT_EQ(copy.getDictionnaryName(), "Company9");
    EXPECT_EQ(copy.getCompanyName(), "Head office");
    EXPECT_EQ(copy.getDictionary()->getName(), "Company9");
    EXPECT_TRUE(copy.getDictionary()->equals(network));
}

TEST_F(FullDefinition, AssignmentCopiesNamesAndSections)
{
    Dictionary plain = namedNetwork();
    CompanyNetworkDefinition target(&plain);

    target = definition;
    definition.getDedicatedAPNPrivateVPN()->setStopArgs("changed");

    EXPECT_EQ(target.getDictionnaryName(), "Company7");
    EXPECT_EQ(target.getCompanyName(), "Head office");
    EXPECT_TRUE(target.getDictionary()->equals(network));
}

TEST_F(FullDefinition, AssignmentRemovesSectionsThatTheOtherLacks)
{
    Dictionary plain = namedNetwork();
    const CompanyNetworkDefinition source(&plain);

    definition = source;

    EXPECT_EQ(definition.getPublicVPN(), nullptr);
    EXPECT_EQ(definition.getMonitoringConfiguration(), nullptr);
    EXPECT_FALSE(definition.hasDedicatedAPN());
    EXPECT_TRUE(definition.getDictionary()->equals(plain));
}

TEST_F(FullDefinition, SelfAssignmentIsHarmless)
{
    const CompanyNetworkDefinition& same = definition;
    const VPNConfiguration* const vpn = definition.getPublicVPN();

    definition = same;

    EXPECT_EQ(definition.getPublicVPN(), vpn);
    EXPECT_TRUE(definition.getDictionary()->equals(network));
}

TEST_F(FullDefinition, UpdatingThePublicVpnReplacesTheSection)
{
    definition.updatePublicVpn(false, "1", "2", "3", "4");

    Dictionary& section = *definition.getPublicVPN();
    EXPECT_EQ(section.getName(), "PublicVPN");
    EXPECT_EQ(
        section.marshall(""), "<dict>\n"
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
}

TEST_F(FullDefinition, UpdatingTheMonitoringReplacesTheSection)
{
    definition.updateMonitoringConfiguration(false, "IP", "10.0.0.2");

    Dictionary& section = *definition.getMonitoringConfiguration();
    EXPECT_EQ(section.getName(), "Monitoring");
    EXPECT_EQ(
        section.marshall(""), "<dict>\n"
                              "\t<key>Activated</key>\n"
                              "\t<string>false</string>\n"
                              "\t<key>Address</key>\n"
                              "\t<string>10.0.0.2</string>\n"
                              "\t<key>Type</key>\n"
                              "\t<string>IP</string>\n"
                              "</dict>\n");
}

TEST_F(FullDefinition, UpdatingTheDedicatedApnReplacesTheSectionAndDropsThePrivateVpn)
{
    definition.updateDedicatedApn("apn", false, "login", "password", "1", "2", "proxy", "3128");

    EXPECT_EQ(definition.getDedicatedAPNPrivateVPN(), nullptr);
    const std::unique_ptr<Dictionary> dictionary = definition.getDictionary();
    Item* const section = dictionary->getItem(std::string("DedicatedAPN"));
    ASSERT_NE(section, nullptr);
    EXPECT_EQ(
        section->marshall(""), "<dict>\n"
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
                               "\t\t<string>3128</string>\n"
                               "\t</dict>\n"
                               "\t<key>UserSpecificCredentials</key>\n"
                               "\t<string>false</string>\n"
                               "</dict>\n");
}

TEST_F(FullDefinition, UpdatingThePrivateVpnReplacesTheSubSection)
{
    definition.updateDedicatedApnPrivateVpn(true, "1", "2", "3", "4");

    ASSERT_NE(definition.getDedicatedAPNPrivateVPN(), nullptr);
    Dictionary& section = *definition.getDedicatedAPNPrivateVPN();
    EXPECT_EQ(section.getName(), "PrivateVPN");
    EXPECT_EQ(
        section.marshall(""), "<dict>\n"
                              "\t<key>Activated</key>\n"
                              "\t<string>true</string>\n"
                              "\t<key>StartArguments</key>\n"
                              "\t<string>2</string>\n"
                              "\t<key>StartCommandLine</key>\n"
                              "\t<string>1</string>\n"
                              "\t<key>StopArguments</key>\n"
                              "\t<string>4</string>\n"
                              "\t<key>StopCommandLine</key>\n"
                              "\t<string>3</string>\n"
                              "</dict>\n");
}

TEST_F(FullDefinition, LoginAndPasswordAreKeptAsGiven)
{
    definition.setDedicatedAPNLogin("new <login>");
    definition.setDedicatedAPNPassword("new & password");

    EXPECT_EQ(definition.getDedicatedAPNLogin(), "new <login>");
    EXPECT_EQ(definition.getDedicatedAPNPassword(), "new & password");
    EXPECT_STREQ(definition.getDictionary()->getValue("DedicatedAPN.Password"), "new & password");
}

TEST_F(PlainDefinition, HasNoSection)
{
    EXPECT_EQ(definition.getPublicVPN(), nullptr);
    EXPECT_EQ(definition.getMonitoringConfiguration(), nullptr);
    EXPECT_FALSE(definition.hasPublicVPN());
    EXPECT_FALSE(definition.hasDedicatedAPN());
}

TEST_F(PlainDefinition, AnswersForTheDedicatedApnThatItLacks)
{
    EXPECT_FALSE(definition.isDedicatedApnWithUserSpecificCredentials());
    EXPECT_EQ(definition.getDedicatedAPN(), "");
    EXPECT_EQ(definition.getDedicatedAPNLogin(), "");
    EXPECT_EQ(definition.getDedicatedAPNPassword(), "");
    EXPECT_EQ(definition.getDedicatedAPNDNS1(), "");
    EXPECT_EQ(definition.getDedicatedAPNDNS2(), "");
    EXPECT_EQ(definition.getDedicatedAPNPrivateVPN(), nullptr);
    EXPECT_EQ(definition.getDedicatedAPNProxyConfiguration(), nullptr);
}

TEST_F(PlainDefinition, LeavesMissingSectionsOutOfItsDictionary)
{
    EXPECT_EQ(
        definition.getDictionary()->marshall(""), "<dict>\n"
                                                  "\t<key>Name</key>\n"
                                                  "\t<string>Plain</string>\n"
                                                  "</dict>\n");
}

TEST_F(PlainDefinition, CreateEmptyCompanyGivesEverySectionItsDefaults)
{
    definition.createEmptyCompany();

    EXPECT_EQ(definition.getDictionnaryName(), "Company1");
    EXPECT_EQ(
        definition.getDictionary()->marshall(""), "<dict>\n"
                                                  "\t<key>DedicatedAPN</key>\n"
                                                  "\t<dict>\n"
                                                  "\t\t<key>PrivateVPN</key>\n"
                                                  "\t\t<dict>\n"
                                                  "\t\t\t<key>Activated</key>\n"
                                                  "\t\t\t<string>false</string>\n"
                                                  "\t\t\t<key>StartArguments</key>\n"
                                                  "\t\t\t<string></string>\n"
                                                  "\t\t\t<key>StartCommandLine</key>\n"
                                                  "\t\t\t<string></string>\n"
                                                  "\t\t\t<key>StopArguments</key>\n"
                                                  "\t\t\t<string></string>\n"
                                                  "\t\t\t<key>StopCommandLine</key>\n"
                                                  "\t\t\t<string></string>\n"
                                                  "\t\t</dict>\n"
                                                  "\t\t<key>Proxy</key>\n"
                                                  "\t\t<dict>\n"
                                                  "\t\t\t<key>Address</key>\n"
                                                  "\t\t\t<string></string>\n"
                                                  "\t\t\t<key>Port</key>\n"
                                                  "\t\t\t<string>0</string>\n"
                                                  "\t\t</dict>\n"
                                                  "\t</dict>\n"
                                                  "\t<key>Monitoring</key>\n"
                                                  "\t<dict>\n"
                                                  "\t\t<key>Activated</key>\n"
                                                  "\t\t<string>false</string>\n"
                                                  "\t\t<key>Address</key>\n"
                                                  "\t\t<string></string>\n"
                                                  "\t\t<key>Type</key>\n"
                                                  "\t\t<string></string>\n"
                                                  "\t</dict>\n"
                                                  "\t<key>Name</key>\n"
                                                  "\t<string>Plain</string>\n"
                                                  "\t<key>PublicVPN</key>\n"
                                                  "\t<dict>\n"
                                                  "\t\t<key>Activated</key>\n"
                                                  "\t\t<string>false</string>\n"
                                                  "\t\t<key>StartArguments</key>\n"
                                                  "\t\t<string></string>\n"
                                                  "\t\t<key>StartCommandLine</key>\n"
                                                  "\t\t<string></string>\n"
                                                  "\t\t<key>StopArguments</key>\n"
                                                  "\t\t<string></string>\n"
                                                  "\t\t<key>StopCommandLine</key>\n"
                                                  "\t\t<string></string>\n"
                                                  "\t</dict>\n"
                                                  "</dict>\n");
}

TEST_F(PlainDefinition, UpdatesCreateMissingSections)
{
    definition.updatePublicVpn(true, "a", "b", "c", "d");
    definition.updateMonitoringConfiguration(true, "IP", "10.0.0.1");
    definition.updateDedicatedApn("apn", true, "l", "p", "1", "2", "proxy", "80");

    EXPECT_TRUE(definition.hasPublicVPN());
    EXPECT_TRUE(definition.getMonitoringConfiguration()->isActivated());
    EXPECT_TRUE(definition.isDedicatedApnWithUserSpecificCredentials());
    EXPECT_EQ(definition.getDedicatedAPNPrivateVPN(), nullptr);
    definition.updateDedicatedApnPrivateVpn(true, "a", "b", "c", "d");
    EXPECT_NE(definition.getDedicatedAPNPrivateVPN(), nullptr);
}

TEST(CompanyNetworkDefinition, HasNoVirtualOperationButItsDestructor)
{
    static_assert(std::has_virtual_destructor_v<CompanyNetworkDefinition>);

    EXPECT_FALSE(isVirtualOperation(&CompanyNetworkDefinition::getCompanyName));
    EXPECT_FALSE(isVirtualOperation(&CompanyNetworkDefinition::updatePublicVpn));
    EXPECT_FALSE(isVirtualOperation(&CompanyNetworkDefinition::createEmptyCompany));
    EXPECT_FALSE(isVirtualOperation(&CompanyNetworkDefinition::getDictionary));
}

TEST(CompanyNetworkDefinition, HasPublicVpnOnlyWhenItIsActivated)
{
    Dictionary network = fullNetwork();
    CompanyNetworkDefinition definition(&network);

    definition.getPublicVPN()->setActivated(false);
    EXPECT_FALSE(definition.hasPublicVPN());

    definition.getPublicVPN()->setActivated(true);
    EXPECT_TRUE(definition.hasPublicVPN());
}

TEST(CompanyNetworkDefinition, HasDedicatedApnEvenWhenItIsEmpty)
{
    Dictionary network = namedNetwork();
    Dictionary empty("DedicatedAPN");
    network.setItem("DedicatedAPN", empty);

    const CompanyNetworkDefinition definition(&network);

    EXPECT_TRUE(definition.hasDedicatedAPN());
    EXPECT_FALSE(definition.isDedicatedApnWithUserSpecificCredentials());
}

TEST(CompanyNetworkDefinition, WithoutNameHasAnEmptyDisplayName)
{
    Dictionary network("Company1");

    const CompanyNetworkDefinition definition(&network);

    EXPECT_EQ(definition.getDictionnaryName(), "Company1");
    EXPECT_EQ(definition.getCompanyName(), "");
}

TEST(CompanyNetworkDefinition, TakesLeafInASectionsPlaceAsAbsent)
{
    Dictionary network("Company1");
    network.addValue("Name", 5);
    network.addValue("PublicVPN", "text");
    network.addValue("Monitoring", "text");
    network.addValue("DedicatedAPN", 5);

    const CompanyNetworkDefinition definition(&network);

    EXPECT_EQ(definition.getCompanyName(), "");
    EXPECT_EQ(definition.getPublicVPN(), nullptr);
    EXPECT_EQ(definition.getMonitoringConfiguration(), nullptr);
    EXPECT_FALSE(definition.hasDedicatedAPN());
}

TEST(CompanyNetworkDefinition, SectionsAreWrittenUnderTheirOwnNamesNotUnderTheirKeys)
{
    Dictionary network = namedNetwork();
    Dictionary vpn = VPNConfiguration::makeDictionary("OwnVPN", true, "a", "b", "c", "d");
    Dictionary proxy("OwnProxy");
    Dictionary apn("OwnAPN");
    apn.setItem("Proxy", proxy);
    network.setItem("PublicVPN", vpn);
    network.setItem("DedicatedAPN", apn);

    const CompanyNetworkDefinition definition(&network);
    const std::unique_ptr<Dictionary> written = definition.getDictionary();

    EXPECT_TRUE(definition.hasPublicVPN());
    EXPECT_NE(definition.getDedicatedAPNProxyConfiguration(), nullptr);
    EXPECT_STREQ(written->getValue("OwnVPN.StartCommandLine"), "a");
    EXPECT_NE(written->getItem("OwnAPN.OwnProxy"), nullptr);
    EXPECT_FALSE(written->hasKey("PublicVPN"));
    EXPECT_FALSE(written->hasKey("DedicatedAPN"));
}

namespace {

/// A network whose sections of these keys are all written under the name "Same".
std::unique_ptr<Dictionary> writtenUnderOneName(const std::vector<std::string>& sections)
{
    Dictionary network("Company1");
    for (const std::string& section : sections) {
        Dictionary same("Same");
        same.addValue("From", section);
        network.setItem(section, same);
    }
    return CompanyNetworkDefinition(&network).getDictionary();
}

} // namespace

TEST(CompanyNetworkDefinition, WritesItsMonitoringThenItsPublicVpnThenItsDedicatedApn)
{
    EXPECT_STREQ(
        writtenUnderOneName({"PublicVPN", "Monitoring"})->getValue("Same.From"), "PublicVPN");
    EXPECT_STREQ(
        writtenUnderOneName({"DedicatedAPN", "PublicVPN", "Monitoring"})->getValue("Same.From"),
        "DedicatedAPN");
}

TEST(CompanyNetworkDefinition, WritesItsNameFirst)
{
    Dictionary network = namedNetwork();
    Dictionary monitoring("Name");
    monitoring.addValue("Type", "IP");
    network.setItem("Monitoring", monitoring);

    const std::unique_ptr<Dictionary> written = CompanyNetworkDefinition(&network).getDictionary();

    EXPECT_STREQ(written->getValue("Name.Type"), "IP");
}

TEST(CompanyNetworkDefinitionDeathTest, RequiresADictionary)
{
    EXPECT_CRASH_REPORT(
        const CompanyNetworkDefinition definition(static_cast<Dictionary*>(nullptr)),
        "ASSERT VIOLATION : dict != NULL - In File : "
        "Application/Common/CompanyNetworkDefinition/src/CompanyNetworkDefinition - "
        "At Line : <line>");
}

TEST_F(PlainDefinition, DeathTestPrivateVpnRequiresADedicatedApn)
{
    EXPECT_CRASH_REPORT(
        definition.updateDedicatedApnPrivateVpn(true, "a", "b", "c", "d"),
        "ASSERT VIOLATION : m_dedicatedAPN - In File : "
        "Application/Common/CompanyNetworkDefinition/src/CompanyNetworkDefinition - "
        "At Line : <line>");
}

TEST_F(PlainDefinition, DeathTestLoginRequiresADedicatedApn)
{
    EXPECT_CRASH_REPORT(
        definition.setDedicatedAPNLogin("login"),
        "ASSERT VIOLATION : hasDedicatedAPN() - In File : "
        "Application/Common/CompanyNetworkDefinition/src/CompanyNetworkDefinition - "
        "At Line : <line>");
}

TEST_F(PlainDefinition, DeathTestPasswordRequiresADedicatedApn)
{
    EXPECT_CRASH_REPORT(
        definition.setDedicatedAPNPassword("password"),
        "ASSERT VIOLATION : hasDedicatedAPN() - In File : "
        "Application/Common/CompanyNetworkDefinition/src/CompanyNetworkDefinition - "
        "At Line : <line>");
}

TEST(CompanyNetworkDefinitionDeathTest, OfNoDictionaryIsEmptyWhereViolationsAreBlocked)
{
    EXPECT_CRASH_REPORT(
        tellWhatNoDictionaryMakes(),
        ":<dict>\n"
        ":\t<key>Name</key>\n"
        ":\t<string></string>\n"
        ":</dict>\n"
        "ASSERT VIOLATION : dict != NULL - In File : "
        "Application/Common/CompanyNetworkDefinition/src/CompanyNetworkDefinition - "
        "At Line : <line>");
}

namespace {

struct ApnChange {
    const char* condition;
    void (*make)(CompanyNetworkDefinition&);

    friend void PrintTo(const ApnChange& row, std::ostream* out) { *out << row.condition; }
};

class ApnChanges : public testing::TestWithParam<ApnChange> {};

} // namespace

TEST_P(ApnChanges, LeaveADefinitionWithoutApnAsItIsWhereViolationsAreBlocked)
{
    Dictionary network = namedNetwork();
    CompanyNetworkDefinition definition(&network);

    EXPECT_CRASH_REPORT(
        tellWhatIsLeftBehind(definition, GetParam().make),
        std::string("Company1:<dict>\n"
                    ":\t<key>Name</key>\n"
                    ":\t<string>Plain</string>\n"
                    ":</dict>\n"
                    "ASSERT VIOLATION : ") +
            GetParam().condition +
            " - In File : "
            "Application/Common/CompanyNetworkDefinition/src/CompanyNetworkDefinition - "
            "At Line : <line>");
}

INSTANTIATE_TEST_SUITE_P(
    CompanyNetworkDefinitionDeathTest, ApnChanges,
    testing::Values(
        ApnChange{
            "m_dedicatedAPN",
            [](CompanyNetworkDefinition& d) {
                d.updateDedicatedApnPrivateVpn(true, "a", "b", "c", "d");
            }},
        ApnChange{
            "hasDedicatedAPN()",
            [](CompanyNetworkDefinition& d) { d.setDedicatedAPNLogin("login"); }},
        ApnChange{"hasDedicatedAPN()", [](CompanyNetworkDefinition& d) {
                      d.setDedicatedAPNPassword("password");
                  }}));
