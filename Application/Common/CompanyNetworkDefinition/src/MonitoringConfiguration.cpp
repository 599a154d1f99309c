#include "MonitoringConfiguration.h"

#include "CallMarker.h"
#include "CompanyNetworkConstants.h"

MonitoringConfiguration::MonitoringConfiguration(Dictionary* dictionary)
    : DictionaryConfiguration(dictionary)
{
    CallMarker marker(
        "MonitoringConfiguration", "MonitoringConfiguration::constructor", true, this);
}

MonitoringConfiguration::MonitoringConfiguration(const MonitoringConfiguration& other)
    : DictionaryConfiguration(other)
{
    CallMarker marker(
        "MonitoringConfiguration", "MonitoringConfiguration::constructor", true, this);
}

MonitoringConfiguration::~MonitoringConfiguration()
{
    CallMarker marker(
        "MonitoringConfiguration", "MonitoringConfiguration::destructor", false, this);
}

Dictionary MonitoringConfiguration::makeDictionary(
    bool activated, const std::string& type, const std::string& address)
{
    CallMarker marker("MonitoringConfiguration::makeDictionary");
    Dictionary dictionary(COMPANY_NETWORK_MONITORING);
    dictionary.addValue(COMPANY_NETWORK_MONITORING_ACTIVATED, toText(activated));
    dictionary.addValue(COMPANY_NETWORK_MONITORING_TYPE, type);
    dictionary.addValue(COMPANY_NETWORK_MONITORING_ADDRESS, address);
    return dictionary;
}

std::string MonitoringConfiguration::getAddress() const
{
    CallMarker marker("MonitoringConfiguration::getAddress", this);
    return getText(COMPANY_NETWORK_MONITORING_ADDRESS);
}

void MonitoringConfiguration::setAddress(const std::string& address)
{
    CallMarker marker("MonitoringConfiguration::setAddress", this);
    setText(COMPANY_NETWORK_MONITORING_ADDRESS, address);
}

int MonitoringConfiguration::getType() const
{
    CallMarker marker("MonitoringConfiguration::getType", this);
    const std::string type = getText(COMPANY_NETWORK_MONITORING_TYPE);
    if (type == gsc_IntranetConfigurationValueMonitoringTypeIP)
        return 1;
    if (type == gsc_IntranetConfigurationValueMonitoringTypeDNS)
        return 2;
    // Kept: the type "HTTP" has no number of its own
    return 0;
}

void MonitoringConfiguration::setType(const std::string& type)
{
    CallMarker marker("MonitoringConfiguration::setType", this);
    setText(COMPANY_NETWORK_MONITORING_TYPE, type);
}

bool MonitoringConfiguration::isActivated() const
{
    CallMarker marker("MonitoringConfiguration::isActivated", this);
    return isTrue(COMPANY_NETWORK_MONITORING_ACTIVATED);
}

void MonitoringConfiguration::setActivated(bool activated)
{
    CallMarker marker("MonitoringConfiguration::setActivated", this);
    setText(COMPANY_NETWORK_MONITORING_ACTIVATED, toText(activated));
}
