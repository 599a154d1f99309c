#include "VPNConfiguration.h"

#include "CallMarker.h"
#include "CompanyNetworkConstants.h"

VPNConfiguration::VPNConfiguration(Dictionary* dictionary) : DictionaryConfiguration(dictionary)
{
    CallMarker marker("VPNConfiguration", "VPNConfiguration::constructor", true, this);
}

VPNConfiguration::VPNConfiguration(const VPNConfiguration& other) : DictionaryConfiguration(other)
{
    CallMarker marker("VPNConfiguration", "VPNConfiguration::constructor", true, this);
}

VPNConfiguration::~VPNConfiguration()
{
    CallMarker marker("VPNConfiguration", "VPNConfiguration::destructor", false, this);
}

Dictionary VPNConfiguration::makeDictionary(
    const std::string& name, bool activated, const std::string& start, const std::string& startArgs,
    const std::string& stop, const std::string& stopArgs)
{
    CallMarker marker("VPNConfiguration::makeDictionary");
    Dictionary dictionary(name);
    dictionary.addValue(COMPANY_NETWORK_VPN_ACTIVATED, toText(activated));
    dictionary.addValue(COMPANY_NETWORK_VPN_STARTCMDLINE, start);
    dictionary.addValue(COMPANY_NETWORK_VPN_STARTARGS, startArgs);
    dictionary.addValue(COMPANY_NETWORK_VPN_STOPCMDLINE, stop);
    dictionary.addValue(COMPANY_NETWORK_VPN_STOPARGS, stopArgs);
    return dictionary;
}

std::string VPNConfiguration::getStartCmdLine() const
{
    CallMarker marker("VPNConfiguration::getStartCmdLine", this);
    return getText(COMPANY_NETWORK_VPN_STARTCMDLINE);
}

void VPNConfiguration::setStartCmdLine(const std::string& commandLine)
{
    CallMarker marker("VPNConfiguration::setStartCmdLine", this);
    setText(COMPANY_NETWORK_VPN_STARTCMDLINE, commandLine);
}

std::string VPNConfiguration::getStartArgs() const
{
    CallMarker marker("VPNConfiguration::getStartArgs", this);
    return getText(COMPANY_NETWORK_VPN_STARTARGS);
}

void VPNConfiguration::setStartArgs(const std::string& arguments)
{
    CallMarker marker("VPNConfiguration::setStartArgs", this);
    setText(COMPANY_NETWORK_VPN_STARTARGS, arguments);
}

std::string VPNConfiguration::getStopCmdLine() const
{
    CallMarker marker("VPNConfiguration::getStopCmdLine", this);
    return getText(COMPANY_NETWORK_VPN_STOPCMDLINE);
}

void VPNConfiguration::setStopCmdLine(const std::string& commandLine)
{
    CallMarker marker("VPNConfiguration::setStopCmdLine", this);
    setText(COMPANY_NETWORK_VPN_STOPCMDLINE, commandLine);
}

std::string VPNConfiguration::getStopArgs() const
{
    CallMarker marker("VPNConfiguration::getStopArgs", this);
    return getText(COMPANY_NETWORK_VPN_STOPARGS);
}

void VPNConfiguration::setStopArgs(const std::string& arguments)
{
    CallMarker marker("VPNConfiguration::setStopArgs", this);
    setText(COMPANY_NETWORK_VPN_STOPARGS, arguments);
}

bool VPNConfiguration::isActivated() const
{
    CallMarker marker("VPNConfiguration::isActivated", this);
    return isTrue(COMPANY_NETWORK_VPN_ACTIVATED);
}

void VPNConfiguration::setActivated(bool activated)
{
    CallMarker marker("VPNConfiguration::setActivated", this);
    setText(COMPANY_NETWORK_VPN_ACTIVATED, toText(activated));
}
