#include "DedicatedAPNConfiguration.h"

#include "CallMarker.h"
#include "CompanyNetworkConstants.h"
#include "Sections.h"

namespace {

/// Moves a sub-section out of the dictionary; none when there is none.
template<typename Section>
std::unique_ptr<Section> takeSection(Dictionary& dictionary, const std::string& key)
{
    CallMarker marker("takeSection");
    auto section = readSection<Section>(dictionary, key);
    if (section != nullptr)
        dictionary.removeItem(key);
    return section;
}

} // namespace

DedicatedAPNConfiguration::DedicatedAPNConfiguration(Dictionary* dictionary)
    : DictionaryConfiguration(dictionary)
{
    CallMarker marker(
        "DedicatedAPNConfiguration", "DedicatedAPNConfiguration::constructor", true, this);
    m_proxy = takeSection<ProxyConfiguration>(held(), COMPANY_NETWORK_DEDICATEDAPN_PROXY);
    m_privateVPN = takeSection<VPNConfiguration>(held(), COMPANY_NETWORK_DEDICATEDAPN_PRIVATEVPN);
}

DedicatedAPNConfiguration::DedicatedAPNConfiguration(const DedicatedAPNConfiguration& other)
    : DictionaryConfiguration(other), m_privateVPN(copySection(other.m_privateVPN.get())),
      m_proxy(copySection(other.m_proxy.get()))
{
    CallMarker marker(
        "DedicatedAPNConfiguration", "DedicatedAPNConfiguration::constructor", true, this);
}

DedicatedAPNConfiguration::~DedicatedAPNConfiguration()
{
    CallMarker marker(
        "DedicatedAPNConfiguration", "DedicatedAPNConfiguration::destructor", false, this);
}

DedicatedAPNConfiguration& DedicatedAPNConfiguration::operator=(
    const DedicatedAPNConfiguration& other)
{
    CallMarker marker("DedicatedAPNConfiguration::operator=", this);
    DictionaryConfiguration::operator=(other);
    m_privateVPN = copySection(other.m_privateVPN.get());
    m_proxy = copySection(other.m_proxy.get());
    return *this;
}

Dictionary DedicatedAPNConfiguration::makeDictionary(
    const std::string& apn, bool userSpecificCredentials, const std::string& login,
    const std::string& password, const std::string& dns1, const std::string& dns2,
    const std::string& proxyAddress, const std::string& proxyPort)
{
    CallMarker marker("DedicatedAPNConfiguration::makeDictionary");
    Dictionary dictionary(COMPANY_NETWORK_DEDICATEDAPN);
    dictionary.addValue(COMPANY_NETWORK_DEDICATEDAPN_APN, apn);
    dictionary.addValue(
        COMPANY_NETWORK_DEDICATEDAPN_USERSPECIFIC_CREDENTIALS, toText(userSpecificCredentials));
    dictionary.addValue(COMPANY_NETWORK_DEDICATEDAPN_LOGIN, login);
    dictionary.addValue(COMPANY_NETWORK_DEDICATEDAPN_PASSWORD, password);
    dictionary.addValue(COMPANY_NETWORK_DEDICATEDAPN_DNS1, dns1);
    dictionary.addValue(COMPANY_NETWORK_DEDICATEDAPN_DNS2, dns2);
    Dictionary proxy = ProxyConfiguration::makeDictionary(proxyAddress, proxyPort);
    dictionary.setItem(COMPANY_NETWORK_DEDICATEDAPN_PROXY, proxy);
    return dictionary;
}

std::unique_ptr<Dictionary> DedicatedAPNConfiguration::getDictionary() const
{
    CallMarker marker("DedicatedAPNConfiguration::getDictionary", this);
    auto whole = std::make_unique<Dictionary>(held());
    if (m_privateVPN != nullptr)
        m_privateVPN->storeIn(*whole);
    if (m_proxy != nullptr)
        m_proxy->storeIn(*whole);
    return whole;
}

VPNConfiguration* DedicatedAPNConfiguration::getPrivateVPN() const
{
    CallMarker marker("DedicatedAPNConfiguration::getPrivateVPN", this);
    return m_privateVPN.get();
}

void DedicatedAPNConfiguration::setPrivateVpn(
    bool activated, const std::string& start, const std::string& startArgs, const std::string& stop,
    const std::string& stopArgs)
{
    CallMarker marker("DedicatedAPNConfiguration::setPrivateVpn", this);
    Dictionary dictionary = VPNConfiguration::makeDictionary(
        COMPANY_NETWORK_DEDICATEDAPN_PRIVATEVPN, activated, start, startArgs, stop, stopArgs);
    m_privateVPN = std::make_unique<VPNConfiguration>(&dictionary);
}

ProxyConfiguration* DedicatedAPNConfiguration::getProxyConfiguration() const
{
    CallMarker marker("DedicatedAPNConfiguration::getProxyConfiguration", this);
    return m_proxy.get();
}

std::string DedicatedAPNConfiguration::getAPN() const
{
    CallMarker marker("DedicatedAPNConfiguration::getAPN", this);
    return getText(COMPANY_NETWORK_DEDICATEDAPN_APN);
}

void DedicatedAPNConfiguration::setAPN(const std::string& apn)
{
    CallMarker marker("DedicatedAPNConfiguration::setAPN", this);
    setText(COMPANY_NETWORK_DEDICATEDAPN_APN, apn);
}

std::string DedicatedAPNConfiguration::getDNS1() const
{
    CallMarker marker("DedicatedAPNConfiguration::getDNS1", this);
    return getText(COMPANY_NETWORK_DEDICATEDAPN_DNS1);
}

void DedicatedAPNConfiguration::setDNS1(const std::string& dns1)
{
    CallMarker marker("DedicatedAPNConfiguration::setDNS1", this);
    setText(COMPANY_NETWORK_DEDICATEDAPN_DNS1, dns1);
}

std::string DedicatedAPNConfiguration::getDNS2() const
{
    CallMarker marker("DedicatedAPNConfiguration::getDNS2", this);
    return getText(COMPANY_NETWORK_DEDICATEDAPN_DNS2);
}

void DedicatedAPNConfiguration::setDNS2(const std::string& dns2)
{
    CallMarker marker("DedicatedAPNConfiguration::setDNS2", this);
    setText(COMPANY_NETWORK_DEDICATEDAPN_DNS2, dns2);
}

std::string DedicatedAPNConfiguration::getLogin() const
{
    CallMarker marker("DedicatedAPNConfiguration::getLogin", this);
    return getText(COMPANY_NETWORK_DEDICATEDAPN_LOGIN);
}

void DedicatedAPNConfiguration::setLogin(const std::string& login)
{
    CallMarker marker("DedicatedAPNConfiguration::setLogin", this);
    setText(COMPANY_NETWORK_DEDICATEDAPN_LOGIN, login);
}

std::string DedicatedAPNConfiguration::getPassword() const
{
    CallMarker marker("DedicatedAPNConfiguration::getPassword", this);
    return getText(COMPANY_NETWORK_DEDICATEDAPN_PASSWORD);
}

void DedicatedAPNConfiguration::setPassword(const std::string& password)
{
    CallMarker marker("DedicatedAPNConfiguration::setPassword", this);
    setText(COMPANY_NETWORK_DEDICATEDAPN_PASSWORD, password);
}

bool DedicatedAPNConfiguration::isUserSpecificCredentials() const
{
    CallMarker marker("DedicatedAPNConfiguration::isUserSpecificCredentials", this);
    return isTrue(COMPANY_NETWORK_DEDICATEDAPN_USERSPECIFIC_CREDENTIALS);
}

void DedicatedAPNConfiguration::enableUserSpecificCredentials(bool enabled)
{
    CallMarker marker("DedicatedAPNConfiguration::enableUserSpecificCredentials", this);
    setText(COMPANY_NETWORK_DEDICATEDAPN_USERSPECIFIC_CREDENTIALS, toText(enabled));
}
