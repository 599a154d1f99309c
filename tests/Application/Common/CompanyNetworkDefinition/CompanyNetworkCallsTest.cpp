#include "CompanyNetworkConfiguration.h"
#include "KFCompanyNetworkNotFoundException.h"
#include "MarkedCalls.h"
#include "TemporaryFolder.h"

#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

using Definition = CompanyNetworkDefinition;
using Configuration = CompanyNetworkConfiguration;

class DefinitionCalls : public testing::TestWithParam<MarkedCall<Definition>> {
protected:
    DefinitionCalls() { definition.createEmptyCompany(); }

    Dictionary network{"Company1"};
    Definition definition{&network};
};

class ConfigurationCalls : public testing::TestWithParam<MarkedCall<Configuration>> {
protected:
    TemporaryFolder folder;
    Configuration configuration{folder.path()};
};

} // namespace

TEST_P(DefinitionCalls, AreMarkedWithTheirNameAndDefinition)
{
    expectMarked(GetParam().text, &definition, [this] { GetParam().run(definition); });
}

INSTANTIATE_TEST_SUITE_P(
    CompanyNetworkDefinition, DefinitionCalls,
    testing::ValuesIn(std::vector<MarkedCall<Definition>>{
        {"CompanyNetworkDefinition::operator=",
         [](Definition& d) {
             const Definition& same = d;
             d = same;
         }},
        {"CompanyNetworkDefinition::getDictionnaryName",
         [](Definition& d) { d.getDictionnaryName(); }},
        {"CompanyNetworkDefinition::getCompanyName", [](Definition& d) { d.getCompanyName(); }},
        {"CompanyNetworkDefinition::getPublicVPN", [](Definition& d) { d.getPublicVPN(); }},
        {"CompanyNetworkDefinition::getMonitoringConfiguration",
         [](Definition& d) { d.getMonitoringConfiguration(); }},
        {"CompanyNetworkDefinition::hasPublicVPN", [](Definition& d) { d.hasPublicVPN(); }},
        {"CompanyNetworkDefinition::hasDedicatedAPN", [](Definition& d) { d.hasDedicatedAPN(); }},
        {"CompanyNetworkDefinition::isDedicatedApnWithUserSpecificCredentials",
         [](Definition& d) { d.isDedicatedApnWithUserSpecificCredentials(); }},
        {"CompanyNetworkDefinition::getDedicatedAPN", [](Definition& d) { d.getDedicatedAPN(); }},
        {"CompanyNetworkDefinition::getDedicatedAPNLogin",
         [](Definition& d) { d.getDedicatedAPNLogin(); }},
        {"CompanyNetworkDefinition::getDedicatedAPNPassword",
         [](Definition& d) { d.getDedicatedAPNPassword(); }},
        {"CompanyNetworkDefinition::getDedicatedAPNDNS1",
         [](Definition& d) { d.getDedicatedAPNDNS1(); }},
        {"CompanyNetworkDefinition::getDedicatedAPNDNS2",
         [](Definition& d) { d.getDedicatedAPNDNS2(); }},
        {"CompanyNetworkDefinition::getDedicatedAPNPrivateVPN",
         [](Definition& d) { d.getDedicatedAPNPrivateVPN(); }},
        {"CompanyNetworkDefinition::getDedicatedAPNProxyConfiguration",
         [](Definition& d) { d.getDedicatedAPNProxyConfiguration(); }},
        {"CompanyNetworkDefinition::updatePublicVpn",
         [](Definition& d) { d.updatePublicVpn(true, "", "", "", ""); }},
        {"CompanyNetworkDefinition::updateMonitoringConfiguration",
         [](Definition& d) { d.updateMonitoringConfiguration(true, "", ""); }},
        {"CompanyNetworkDefinition::updateDedicatedApn",
         [](Definition& d) { d.updateDedicatedApn("", true, "", "", "", "", "", ""); }},
        {"CompanyNetworkDefinition::updateDedicatedApnPrivateVpn",
         [](Definition& d) { d.updateDedicatedApnPrivateVpn(true, "", "", "", ""); }},
        {"CompanyNetworkDefinition::setDedicatedAPNLogin",
         [](Definition& d) { d.setDedicatedAPNLogin(""); }},
        {"CompanyNetworkDefinition::setDedicatedAPNPassword",
         [](Definition& d) { d.setDedicatedAPNPassword(""); }},
        {"CompanyNetworkDefinition::createEmptyCompany",
         [](Definition& d) { d.createEmptyCompany(); }},
        {"CompanyNetworkDefinition::getDictionary", [](Definition& d) { d.getDictionary(); }}}));

TEST_P(ConfigurationCalls, AreMarkedWithTheirNameAndConfiguration)
{
    expectMarked(GetParam().text, &configuration, [this] { GetParam().run(configuration); });
}

INSTANTIATE_TEST_SUITE_P(
    CompanyNetworkConfiguration, ConfigurationCalls,
    testing::ValuesIn(std::vector<MarkedCall<Configuration>>{
        {"CompanyNetworkConfiguration::getConfigurationFile",
         [](Configuration& c) { c.getConfigurationFile("/tmp"); }},
        {"CompanyNetworkConfiguration::readConfiguration",
         [](Configuration& c) { c.readConfiguration("/missing"); }},
        {"CompanyNetworkConfiguration::writeDefinition",
         [](Configuration& c) { c.writeDefinition("/missing"); }},
        {"CompanyNetworkConfiguration::empty",
         [](Configuration& c) { static_cast<void>(c.empty()); }},
        {"CompanyNetworkConfiguration::getCompanyNetworkList",
         [](Configuration& c) { c.getCompanyNetworkList(); }},
        {"CompanyNetworkConfiguration::getCompanyNetworkNameList",
         [](Configuration& c) { c.getCompanyNetworkNameList(); }},
        {"CompanyNetworkConfiguration::getCompanyNetwork",
         [](Configuration& c) { c.getCompanyNetwork(""); }},
        {"CompanyNetworkConfiguration::addCompanyNetwork",
         [](Configuration& c) { c.addCompanyNetwork("name"); }},
        {"CompanyNetworkConfiguration::deleteCompanyNetwork",
         [](Configuration& c) { c.deleteCompanyNetwork(""); }},
        {"CompanyNetworkConfiguration::createAvailableCompanyNetworkDicName",
         [](Configuration& c) { c.createAvailableCompanyNetworkDicName(); }}}));

TEST(ConfigurationCalls, OfAddingACopyAreMarkedWithTheirNameAndConfiguration)
{
    const TemporaryFolder folder;
    Configuration configuration(folder.path());
    Dictionary network;
    const Definition definition(&network);

    expectMarked("CompanyNetworkConfiguration::addCompanyNetwork", &configuration, [&] {
        configuration.addCompanyNetwork(definition);
    });
}

TEST(ConfigurationCalls, OfAnAdditionAreMarkedInsideIt)
{
    const TemporaryFolder folder;
    Configuration configuration(folder.path());
    PublishedTracer tracer;
    tracer->setPrintObjects(true);

    configuration.addCompanyNetwork("name");

    for (const char* call :
         {"  CompanyNetworkConfiguration::createAvailableCompanyNetworkDicName",
          "  CompanyNetworkConfiguration::append"})
        EXPECT_THAT(tracer.lines(), testing::HasSubstr(entryLine(call, &configuration)));
}

TEST(DefinitionCalls, OfAReadingMarkTheSectionsInTheirOrder)
{
    Dictionary network("Company1");
    for (const char* key : {"DedicatedAPN", "Monitoring", "PublicVPN"}) {
        Dictionary section(key);
        network.setItem(key, section);
    }
    const PublishedTracer tracer;

    const Definition definition(&network);

    std::vector<std::string> sections = callsIn(tracer.lines());
    std::erase_if(sections, [](const std::string& call) {
        return !call.ends_with("Configuration::constructor") ||
               call.ends_with(" DictionaryConfiguration::constructor");
    });
    EXPECT_THAT(
        sections,
        testing::ElementsAre(
            "    MonitoringConfiguration::constructor", "    VPNConfiguration::constructor",
            "    DedicatedAPNConfiguration::constructor"));
}

TEST(CompanyNetworks, AreCountedFromConstructorToDestructor)
{
    const TemporaryFolder folder;
    Dictionary network;
    expectCounted("CompanyNetworkConfiguration", [&] {
        return std::make_unique<Configuration>(folder.path());
    });
    expectCounted(
        "CompanyNetworkDefinition", [&] { return std::make_unique<Definition>(&network); });

    const Definition definition(&network);
    expectCounted(
        "CompanyNetworkDefinition", [&] { return std::make_unique<Definition>(definition); });
    expectCounted("CompanyNetworkDefinition", [&] {
        return std::make_unique<Definition>(definition, "Company2");
    });
}

TEST(CompanyNetworkNotFound, IsMarkedAndCounted)
{
    using NotFound = KFCompanyNetworkNotFoundException;
    const NotFound exception("Some/Unit", 12);

    expectMarked("KFCompanyNetworkNotFoundException::toString", &exception, [&] {
        static_cast<void>(exception.toString());
    });
    expectCounted("KFCompanyNetworkNotFoundException", [] {
        return std::make_unique<NotFound>("Some/Unit", 12);
    });
    expectCounted(
        "KFCompanyNetworkNotFoundException", [&] { return std::make_unique<NotFound>(exception); });
}
