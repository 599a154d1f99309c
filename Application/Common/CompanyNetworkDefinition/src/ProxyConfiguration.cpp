#include "ProxyConfiguration.h"

#include "CallMarker.h"
#include "CompanyNetworkConstants.h"

ProxyConfiguration::ProxyConfiguration(Dictionary* dictionary) : DictionaryConfiguration(dictionary)
{
    CallMarker marker("ProxyConfiguration", "ProxyConfiguration::constructor", true, this);
}

ProxyConfiguration::ProxyConfiguration(const ProxyConfiguration& other)
    : DictionaryConfiguration(other)
{
    CallMarker marker("ProxyConfiguration", "ProxyConfiguration::constructor", true, this);
}

ProxyConfiguration::~ProxyConfiguration()
{
    CallMarker marker("ProxyConfiguration", "ProxyConfiguration::destructor", false, this);
}

Dictionary ProxyConfiguration::makeDictionary(const std::string& address, const std::string& port)
{
    CallMarker marker("ProxyConfiguration::makeDictionary");
    Dictionary dictionary(COMPANY_NETWORK_DEDICATEDAPN_PROXY);
    dictionary.addValue(COMPANY_NETWORK_DEDICATEDAPN_PROXY_ADDRESS, address);
    dictionary.addValue(COMPANY_NETWORK_DEDICATEDAPN_PROXY_PORT, port);
    return dictionary;
}

std::string ProxyConfiguration::getAddress() const
{
    CallMarker marker("ProxyConfiguration::getAddress", this);
    return getText(COMPANY_NETWORK_DEDICATEDAPN_PROXY_ADDRESS);
}

void ProxyConfiguration::setAddress(const std::string& address)
{
    CallMarker marker("ProxyConfiguration::setAddress", this);
    setText(COMPANY_NETWORK_DEDICATEDAPN_PROXY_ADDRESS, address);
}

std::string ProxyConfiguration::getport() const
{
    CallMarker marker("ProxyConfiguration::getport", this);
    return getText(COMPANY_NETWORK_DEDICATEDAPN_PROXY_PORT);
}

void ProxyConfiguration::setport(const std::string& port)
{
    CallMarker marker("ProxyConfiguration::setport", this);
    setText(COMPANY_NETWORK_DEDICATEDAPN_PROXY_PORT, port);
}
