#include "DedicatedAPNConfiguration.h"
#include "MarkedCalls.h"
#include "MonitoringConfiguration.h"
#include "Sections.h"

#include <memory>
#include <string>

#include <gtest/gtest.h>

using testing::Contains;
using testing::EndsWith;
using testing::HasSubstr;

namespace {

/// Gives each section's calls a section of an empty dictionary.
template<typename Section>
class SectionCalls : public testing::TestWithParam<MarkedCall<Section>> {
protected:
    void expectThatTheCallIsMarked()
    {
        const auto& call = this->GetParam();
        expectMarked(call.text, &section, [&] { call.run(section); });
    }

    Dictionary dictionary;
    Section section{&dictionary};
};

using Base = DictionaryConfiguration;
using Vpn = VPNConfiguration;
using Monitoring = MonitoringConfiguration;
using Proxy = ProxyConfiguration;
using Apn = DedicatedAPNConfiguration;

using BaseCalls = SectionCalls<Base>;
using VpnCalls = SectionCalls<Vpn>;
using MonitoringCalls = SectionCalls<Monitoring>;
using ProxyCalls = SectionCalls<Proxy>;
using ApnCalls = SectionCalls<Apn>;

/// Expects the section, made from a dictionary and made as a copy, to be counted for its class.
template<typename Section>
void expectSectionCounted(const std::string& className)
{
    Dictionary dictionary;
    expectCounted(className, [&] { return std::make_unique<Section>(&dictionary); });

    const Section section(&dictionary);
    expectCounted(className, [&] { return std::make_unique<Section>(section); });
}

} // namespace

TEST_P(BaseCalls, AreMarkedWithTheirNameAndSection)
{
    expectThatTheCallIsMarked();
}

INSTANTIATE_TEST_SUITE_P(
    DictionaryConfiguration, BaseCalls,
    testing::ValuesIn(std::vector<MarkedCall<Base>>{
        {"DictionaryConfiguration::operator Dictionary&",
         [](Base& section) { static_cast<void>(static_cast<Dictionary&>(section)); }},
        {"DictionaryConfiguration::operator=", [](Base& section) {
             const Base& same = section;
             section = same;
         }}}));

TEST_P(VpnCalls, AreMarkedWithTheirNameAndSection)
{
    expectThatTheCallIsMarked();
}

INSTANTIATE_TEST_SUITE_P(
    VPNConfiguration, VpnCalls,
    testing::ValuesIn(std::vector<MarkedCall<Vpn>>{
        {"VPNConfiguration::getStartCmdLine", [](Vpn& s) { s.getStartCmdLine(); }},
        {"VPNConfiguration::setStartCmdLine", [](Vpn& s) { s.setStartCmdLine(""); }},
        {"VPNConfiguration::getStartArgs", [](Vpn& s) { s.getStartArgs(); }},
        {"VPNConfiguration::setStartArgs", [](Vpn& s) { s.setStartArgs(""); }},
        {"VPNConfiguration::getStopCmdLine", [](Vpn& s) { s.getStopCmdLine(); }},
        {"VPNConfiguration::setStopCmdLine", [](Vpn& s) { s.setStopCmdLine(""); }},
        {"VPNConfiguration::getStopArgs", [](Vpn& s) { s.getStopArgs(); }},
        {"VPNConfiguration::setStopArgs", [](Vpn& s) { s.setStopArgs(""); }},
        {"VPNConfiguration::isActivated", [](Vpn& s) { s.isActivated(); }},
        {"VPNConfiguration::setActivated", [](Vpn& s) { s.setActivated(true); }}}));

TEST_P(MonitoringCalls, AreMarkedWithTheirNameAndSection)
{
    expectThatTheCallIsMarked();
}

INSTANTIATE_TEST_SUITE_P(
    MonitoringConfiguration, MonitoringCalls,
    testing::ValuesIn(std::vector<MarkedCall<Monitoring>>{
        {"MonitoringConfiguration::getAddress", [](Monitoring& s) { s.getAddress(); }},
        {"MonitoringConfiguration::setAddress", [](Monitoring& s) { s.setAddress(""); }},
        {"MonitoringConfiguration::getType", [](Monitoring& s) { s.getType(); }},
        {"MonitoringConfiguration::setType", [](Monitoring& s) { s.setType(""); }},
        {"MonitoringConfiguration::isActivated", [](Monitoring& s) { s.isActivated(); }},
        {"MonitoringConfiguration::setActivated", [](Monitoring& s) { s.setActivated(true); }}}));

TEST_P(ProxyCalls, AreMarkedWithTheirNameAndSection)
{
    expectThatTheCallIsMarked();
}

INSTANTIATE_TEST_SUITE_P(
    ProxyConfiguration, ProxyCalls,
    testing::ValuesIn(std::vector<MarkedCall<Proxy>>{
        {"ProxyConfiguration::getAddress", [](Proxy& s) { s.getAddress(); }},
        {"ProxyConfiguration::setAddress", [](Proxy& s) { s.setAddress(""); }},
        {"ProxyConfiguration::getport", [](Proxy& s) { s.getport(); }},
        {"ProxyConfiguration::setport", [](Proxy& s) { s.setport(""); }}}));

TEST_P(ApnCalls, AreMarkedWithTheirNameAndSection)
{
    expectThatTheCallIsMarked();
}

INSTANTIATE_TEST_SUITE_P(
    DedicatedAPNConfiguration, ApnCalls,
    testing::ValuesIn(std::vector<MarkedCall<Apn>>{
        {"DedicatedAPNConfiguration::operator=",
         [](Apn& s) {
             const Apn& same = s;
             s = same;
         }},
        {"DedicatedAPNConfiguration::getDictionary", [](Apn& s) { s.getDictionary(); }},
        {"DedicatedAPNConfiguration::getPrivateVPN", [](Apn& s) { s.getPrivateVPN(); }},
        {"DedicatedAPNConfiguration::setPrivateVpn",
         [](Apn& s) { s.setPrivateVpn(true, "", "", "", ""); }},
        {"DedicatedAPNConfiguration::getProxyConfiguration",
         [](Apn& s) { s.getProxyConfiguration(); }},
        {"DedicatedAPNConfiguration::getAPN", [](Apn& s) { s.getAPN(); }},
        {"DedicatedAPNConfiguration::setAPN", [](Apn& s) { s.setAPN(""); }},
        {"DedicatedAPNConfiguration::getDNS1", [](Apn& s) { s.getDNS1(); }},
        {"DedicatedAPNConfiguration::setDNS1", [](Apn& s) { s.setDNS1(""); }},
        {"DedicatedAPNConfiguration::getDNS2", [](Apn& s) { s.getDNS2(); }},
        {"DedicatedAPNConfiguration::setDNS2", [](Apn& s) { s.setDNS2(""); }},
        {"DedicatedAPNConfiguration::getLogin", [](Apn& s) { s.getLogin(); }},
        {"DedicatedAPNConfiguration::setLogin", [](Apn& s) { s.setLogin(""); }},
        {"DedicatedAPNConfiguration::getPassword", [](Apn& s) { s.getPassword(); }},
        {"DedicatedAPNConfiguration::setPassword", [](Apn& s) { s.setPassword(""); }},
        {"DedicatedAPNConfiguration::isUserSpecificCredentials",
         [](Apn& s) { s.isUserSpecificCredentials(); }},
        {"DedicatedAPNConfiguration::enableUserSpecificCredentials",
         [](Apn& s) { s.enableUserSpecificCredentials(true); }}}));

TEST(SectionCalls, OfStoringAreMarkedWithTheirNameAndSection)
{
    Dictionary dictionary;
    Dictionary parent;
    const Base section(&dictionary);

    expectMarked("DictionaryConfiguration::storeIn", &section, [&] { section.storeIn(parent); });
}

TEST(SectionFunctions, AreMarkedWithTheirName)
{
    Dictionary dictionary;
    expectMarked("DictionaryConfiguration::getDictionaryValue", nullptr, [&] {
        Base::getDictionaryValue(dictionary, "key");
    });
    expectMarked("DictionaryConfiguration::setDictionaryValue", nullptr, [&] {
        Base::setDictionaryValue(dictionary, "key", "");
    });
    expectMarked("DictionaryConfiguration::toText", nullptr, [] { Base::toText(true); });
    expectMarked("VPNConfiguration::makeDictionary", nullptr, [] {
        Vpn::makeDictionary("", true, "", "", "", "");
    });
    expectMarked("MonitoringConfiguration::makeDictionary", nullptr, [] {
        Monitoring::makeDictionary(true, "", "");
    });
    expectMarked(
        "ProxyConfiguration::makeDictionary", nullptr, [] { Proxy::makeDictionary("", ""); });
    expectMarked("DedicatedAPNConfiguration::makeDictionary", nullptr, [] {
        Apn::makeDictionary("", true, "", "", "", "", "", "");
    });
    expectMarked("readSection", nullptr, [&] { readSection<Vpn>(dictionary, "key"); });
    expectMarked("copySection", nullptr, [] { copySection<Vpn>(nullptr); });
}

TEST(SectionCalls, AreMarkedInsideTheOnesThatMakeThem)
{
    Dictionary dictionary;
    Vpn section(&dictionary);
    PublishedTracer tracer;
    tracer->setPrintObjects(true);

    section.isActivated();
    section.setStopArgs("");

    for (const char* call :
         {"  DictionaryConfiguration::isTrue", "    DictionaryConfiguration::getText",
          "  DictionaryConfiguration::setText"})
        EXPECT_THAT(tracer.lines(), HasSubstr(entryLine(call, &section)));
    for (const char* call :
         {"      DictionaryConfiguration::getDictionaryValue",
          "    DictionaryConfiguration::setDictionaryValue"})
        EXPECT_THAT(tracer.lines(), HasSubstr(entryLine(call, nullptr)));
}

TEST(SectionCalls, OfADedicatedAPNAreMarkedInsideItsConstructor)
{
    Dictionary dictionary;
    PublishedTracer tracer;
    tracer->setPrintObjects(true);

    const Apn section(&dictionary);

    EXPECT_THAT(tracer.lines(), HasSubstr(entryLine("  DictionaryConfiguration::held", &section)));
    EXPECT_THAT(callsIn(tracer.lines()), Contains(EndsWith("]  takeSection")).Times(2));
}

TEST(SectionCalls, OfAnAssignmentMarkTheDictionaryThatIsNeverDestroyed)
{
    Dictionary dictionary;
    const Base other(&dictionary);
    Base section(&dictionary);
    const PublishedTracer tracer;

    section = other;

    EXPECT_THAT(callsIn(tracer.lines()), Contains("  leakOnPurpose"));
}

TEST(Sections, AreCountedFromConstructorToDestructor)
{
    expectSectionCounted<Base>("DictionaryConfiguration");
    expectSectionCounted<Vpn>("VPNConfiguration");
    expectSectionCounted<Monitoring>("MonitoringConfiguration");
    expectSectionCounted<Proxy>("ProxyConfiguration");
    expectSectionCounted<Apn>("DedicatedAPNConfiguration");
}
