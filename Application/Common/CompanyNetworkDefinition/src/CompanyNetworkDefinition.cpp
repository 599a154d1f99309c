#include "CompanyNetworkDefinition.h"

#include "CallMarker.h"
#include "CompanyNetworkConstants.h"
#include "Contract.h"
#include "Sections.h"

namespace {

constexpr const char* UNIT =
    "Application/Common/CompanyNetworkDefinition/src/CompanyNetworkDefinition";

} // namespace

CompanyNetworkDefinition::CompanyNetworkDefinition(Dictionary* dict)
{
    CallMarker marker(
        "CompanyNetworkDefinition", "CompanyNetworkDefinition::constructor", true, this);
    if (!Contract::assertThat(dict != nullptr, "dict != NULL", UNIT))
        return;
    // NOLINTNEXTLINE(clang-analyzer-core.CallAndMessage): the check tells whether it is null
    m_dictionaryName = dict->getName();
    m_companyName = DictionaryConfiguration::getDictionaryValue(*dict, COMPANY_NETWORK_NAME);
    m_monitoring = readSection<MonitoringConfiguration>(*dict, COMPANY_NETWORK_MONITORING);
    m_publicVPN = readSection<VPNConfiguration>(*dict, COMPANY_NETWORK_PUBLICVPN);
    m_dedicatedAPN = readSection<DedicatedAPNConfiguration>(*dict, COMPANY_NETWORK_DEDICATEDAPN);
}

CompanyNetworkDefinition::CompanyNetworkDefinition(const CompanyNetworkDefinition& other)
{
    CallMarker marker(
        "CompanyNetworkDefinition", "CompanyNetworkDefinition::constructor", true, this);
    *this = other;
}

CompanyNetworkDefinition::CompanyNetworkDefinition(
    const CompanyNetworkDefinition& other, const std::string& name)
{
    CallMarker marker(
        "CompanyNetworkDefinition", "CompanyNetworkDefinition::constructor", true, this);
    *this = other;
    // NOLINTNEXTLINE(cppcoreguidelines-prefer-member-initializer): the copy sets it too
    m_dictionaryName = name;
}

CompanyNetworkDefinition& CompanyNetworkDefinition::operator=(const CompanyNetworkDefinition& other)
{
    CallMarker marker("CompanyNetworkDefinition::operator=", this);
    if (this == &other)
        return *this;
    m_dictionaryName = other.m_dictionaryName;
    m_companyName = other.m_companyName;
    m_publicVPN = copySection(other.m_publicVPN.get());
    m_monitoring = copySection(other.m_monitoring.get());
    m_dedicatedAPN = copySection(other.m_dedicatedAPN.get());
    return *this;
}

CompanyNetworkDefinition::~CompanyNetworkDefinition()
{
    CallMarker marker(
        "CompanyNetworkDefinition", "CompanyNetworkDefinition::destructor", false, this);
}

const std::string& CompanyNetworkDefinition::getDictionnaryName() const
{
    CallMarker marker("CompanyNetworkDefinition::getDictionnaryName", this);
    return m_dictionaryName;
}

const std::string& CompanyNetworkDefinition::getCompanyName() const
{
    CallMarker marker("CompanyNetworkDefinition::getCompanyName", this);
    return m_companyName;
}

VPNConfiguration* CompanyNetworkDefinition::getPublicVPN() const
{
    CallMarker marker("CompanyNetworkDefinition::getPublicVPN", this);
    return m_publicVPN.get();
}

MonitoringConfiguration* CompanyNetworkDefinition::getMonitoringConfiguration() const
{
    CallMarker marker("CompanyNetworkDefinition::getMonitoringConfiguration", this);
    return m_monitoring.get();
}

bool CompanyNetworkDefinition::hasPublicVPN() const
{
    CallMarker marker("CompanyNetworkDefinition::hasPublicVPN", this);
    return m_publicVPN != nullptr && m_publicVPN->isActivated();
}

bool CompanyNetworkDefinition::hasDedicatedAPN() const
{
    CallMarker marker("CompanyNetworkDefinition::hasDedicatedAPN", this);
    // Kept: unlike hasPublicVPN(), the section alone counts, whatever it holds
    return m_dedicatedAPN != nullptr;
}

bool CompanyNetworkDefinition::isDedicatedApnWithUserSpecificCredentials() const
{
    CallMarker marker("CompanyNetworkDefinition::isDedicatedApnWithUserSpecificCredentials", this);
    return m_dedicatedAPN != nullptr && m_dedicatedAPN->isUserSpecificCredentials();
}

std::string CompanyNetworkDefinition::getDedicatedAPN() const
{
    CallMarker marker("CompanyNetworkDefinition::getDedicatedAPN", this);
    return m_dedicatedAPN == nullptr ? EMPTY_STRING : m_dedicatedAPN->getAPN();
}

std::string CompanyNetworkDefinition::getDedicatedAPNLogin() const
{
    CallMarker marker("CompanyNetworkDefinition::getDedicatedAPNLogin", this);
    return m_dedicatedAPN == nullptr ? EMPTY_STRING : m_dedicatedAPN->getLogin();
}

std::string CompanyNetworkDefinition::getDedicatedAPNPassword() const
{
    CallMarker marker("CompanyNetworkDefinition::getDedicatedAPNPassword", this);
    return m_dedicatedAPN == nullptr ? EMPTY_STRING : m_dedicatedAPN->getPassword();
}

std::string CompanyNetworkDefinition::getDedicatedAPNDNS1() const
{
    CallMarker marker("CompanyNetworkDefinition::getDedicatedAPNDNS1", this);
    return m_dedicatedAPN == nullptr ? EMPTY_STRING : m_dedicatedAPN->getDNS1();
}

std::string CompanyNetworkDefinition::getDedicatedAPNDNS2() const
{
    CallMarker marker("CompanyNetworkDefinition::getDedicatedAPNDNS2", this);
    return m_dedicatedAPN == nullptr ? EMPTY_STRING : m_dedicatedAPN->getDNS2();
}

VPNConfiguration* CompanyNetworkDefinition::getDedicatedAPNPrivateVPN() const
{
    CallMarker marker("CompanyNetworkDefinition::getDedicatedAPNPrivateVPN", this);
    return m_dedicatedAPN == nullptr ? nullptr : m_dedicatedAPN->getPrivateVPN();
}

ProxyConfiguration* CompanyNetworkDefinition::getDedicatedAPNProxyConfiguration() const
{
    CallMarker marker("CompanyNetworkDefinition::getDedicatedAPNProxyConfiguration", this);
    return m_dedicatedAPN == nullptr ? nullptr : m_dedicatedAPN->getProxyConfiguration();
}

void CompanyNetworkDefinition::updatePublicVpn(
    bool activated, const std::string& start, const std::string& startArgs, const std::string& stop,
    const std::string& stopArgs)
{
    CallMarker marker("CompanyNetworkDefinition::updatePublicVpn", this);
    Dictionary dictionary = VPNConfiguration::makeDictionary(
        COMPANY_NETWORK_PUBLICVPN, activated, start, startArgs, stop, stopArgs);
    m_publicVPN = std::make_unique<VPNConfiguration>(&dictionary);
}

void CompanyNetworkDefinition::updateMonitoringConfiguration(
    bool activated, const std::string& type, const std::string& address)
{
    CallMarker marker("CompanyNetworkDefinition::updateMonitoringConfiguration", this);
    Dictionary dictionary = MonitoringConfiguration::makeDictionary(activated, type, address);
    m_monitoring = std::make_unique<MonitoringConfiguration>(&dictionary);
}

void CompanyNetworkDefinition::updateDedicatedApn(
    const std::string& apn, bool userSpecificCredentials, const std::string& login,
    const std::string& password, const std::string& dns1, const std::string& dns2,
    const std::string& proxyAddress, const std::string& proxyPort)
{
    CallMarker marker("CompanyNetworkDefinition::updateDedicatedApn", this);
    Dictionary dictionary = DedicatedAPNConfiguration::makeDictionary(
        apn, userSpecificCredentials, login, password, dns1, dns2, proxyAddress, proxyPort);
    m_dedicatedAPN = std::make_unique<DedicatedAPNConfiguration>(&dictionary);
}

void CompanyNetworkDefinition::updateDedicatedApnPrivateVpn(
    bool activated, const std::string& start, const std::string& startArgs, const std::string& stop,
    const std::string& stopArgs)
{
    CallMarker marker("CompanyNetworkDefinition::updateDedicatedApnPrivateVpn", this);
    if (Contract::assertThat(m_dedicatedAPN != nullptr, "m_dedicatedAPN", UNIT))
        m_dedicatedAPN->setPrivateVpn(activated, start, startArgs, stop, stopArgs);
}

void CompanyNetworkDefinition::setDedicatedAPNLogin(const std::string& login)
{
    CallMarker marker("CompanyNetworkDefinition::setDedicatedAPNLogin", this);
    if (Contract::assertThat(hasDedicatedAPN(), "hasDedicatedAPN()", UNIT))
        m_dedicatedAPN->setLogin(login);
}

void CompanyNetworkDefinition::setDedicatedAPNPassword(const std::string& password)
{
    CallMarker marker("CompanyNetworkDefinition::setDedicatedAPNPassword", this);
    if (Contract::assertThat(hasDedicatedAPN(), "hasDedicatedAPN()", UNIT))
        m_dedicatedAPN->setPassword(password);
}

void CompanyNetworkDefinition::createEmptyCompany()
{
    CallMarker marker("CompanyNetworkDefinition::createEmptyCompany", this);
    updateMonitoringConfiguration(false, EMPTY_STRING, EMPTY_STRING);
    updatePublicVpn(false, EMPTY_STRING, EMPTY_STRING, EMPTY_STRING, EMPTY_STRING);
    Dictionary dictionary(COMPANY_NETWORK_DEDICATEDAPN);
    Dictionary proxy = ProxyConfiguration::makeDictionary(EMPTY_STRING, ZERO_INT_STRING);
    dictionary.setItem(COMPANY_NETWORK_DEDICATEDAPN_PROXY, proxy);
    m_dedicatedAPN = std::make_unique<DedicatedAPNConfiguration>(&dictionary);
    updateDedicatedApnPrivateVpn(false, EMPTY_STRING, EMPTY_STRING, EMPTY_STRING, EMPTY_STRING);
}

std::unique_ptr<Dictionary> CompanyNetworkDefinition::getDictionary() const
{
    CallMarker marker("CompanyNetworkDefinition::getDictionary", this);
    auto dictionary = std::make_unique<Dictionary>(m_dictionaryName);
    dictionary->addValue(COMPANY_NETWORK_NAME, m_companyName);
    if (m_monitoring != nullptr)
        m_monitoring->storeIn(*dictionary);
    if (m_publicVPN != nullptr)
        m_publicVPN->storeIn(*dictionary);
    if (m_dedicatedAPN != nullptr) {
        const auto section = m_dedicatedAPN->getDictionary();
        dictionary->setItem(section->getName(), *section);
    }
    return dictionary;
}
