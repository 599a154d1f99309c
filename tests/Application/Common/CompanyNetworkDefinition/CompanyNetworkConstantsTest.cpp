#include "CompanyNetworkConstants.h"

#include <ostream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

struct Constant {
    std::string name;
    std::string value;
    std::string expected;
};

// Keeps a failure readable: googletest would print the bytes of the struct.
void PrintTo(const Constant& constant, std::ostream* out)
{
    *out << constant.name;
}

#define CONSTANT(name, expected)                                                                   \
    Constant                                                                                       \
    {                                                                                              \
#name, name, expected                                                                      \
    }

const std::vector<Constant> all = {
    CONSTANT(COMPANY_NETWORK_CONFIGURATION_FILE, "CompanyNetworkConfiguration.cfg"),
    CONSTANT(COMPANY_NAME_TEMPLATE, "Company"),
    CONSTANT(COMPANY_NETWORK_NAME, "Name"),
    CONSTANT(COMPANY_NETWORK_MONITORING, "Monitoring"),
    CONSTANT(COMPANY_NETWORK_MONITORING_ACTIVATED, "Activated"),
    CONSTANT(COMPANY_NETWORK_MONITORING_TYPE, "Type"),
    CONSTANT(COMPANY_NETWORK_MONITORING_TYPE_NONE, "NONE"),
    CONSTANT(COMPANY_NETWORK_MONITORING_TYPE_IP, "IP"),
    CONSTANT(COMPANY_NETWORK_MONITORING_TYPE_DNS, "DNS"),
    CONSTANT(COMPANY_NETWORK_MONITORING_TYPE_HTTP, "HTTP"),
    CONSTANT(COMPANY_NETWORK_MONITORING_ADDRESS, "Address"),
    CONSTANT(COMPANY_NETWORK_PUBLICVPN, "PublicVPN"),
    CONSTANT(COMPANY_NETWORK_VPN_ACTIVATED, "Activated"),
    CONSTANT(COMPANY_NETWORK_VPN_STARTCMDLINE, "StartCommandLine"),
    CONSTANT(COMPANY_NETWORK_VPN_STARTARGS, "StartArguments"),
    CONSTANT(COMPANY_NETWORK_VPN_STOPCMDLINE, "StopCommandLine"),
    CONSTANT(COMPANY_NETWORK_VPN_STOPARGS, "StopArguments"),
    CONSTANT(COMPANY_NETWORK_DEDICATEDAPN, "DedicatedAPN"),
    CONSTANT(COMPANY_NETWORK_DEDICATEDAPN_APN, "APN"),
    CONSTANT(COMPANY_NETWORK_DEDICATEDAPN_USERSPECIFIC_CREDENTIALS, "UserSpecificCredentials"),
    CONSTANT(COMPANY_NETWORK_DEDICATEDAPN_LOGIN, "Login"),
    CONSTANT(COMPANY_NETWORK_DEDICATEDAPN_PASSWORD, "Password"),
    CONSTANT(COMPANY_NETWORK_DEDICATEDAPN_DNS1, "DNS1"),
    CONSTANT(COMPANY_NETWORK_DEDICATEDAPN_DNS2, "DNS2"),
    CONSTANT(COMPANY_NETWORK_DEDICATEDAPN_PROXY, "Proxy"),
    CONSTANT(COMPANY_NETWORK_DEDICATEDAPN_PROXY_ADDRESS, "Address"),
    CONSTANT(COMPANY_NETWORK_DEDICATEDAPN_PROXY_PORT, "Port"),
    CONSTANT(COMPANY_NETWORK_DEDICATEDAPN_PRIVATEVPN, "PrivateVPN"),
    CONSTANT(EMPTY_STRING, ""),
    CONSTANT(FALSE_BOOLEAN_STRING, "false"),
    CONSTANT(TRUE_BOOLEAN_STRING, "true"),
    CONSTANT(ZERO_INT_STRING, "0"),
    CONSTANT(gsc_DefaultCompanyName, "Intranet"),
    CONSTANT(gsc_IntranetConfigurationDomain, "Intranet"),
    CONSTANT(gsc_IntranetConfigurationKeyVPNSelected, "VPNSELECTED"),
    CONSTANT(gsc_IntranetConfigurationKeyVPNStart, "VPNSTARTCOMMAND"),
    CONSTANT(gsc_IntranetConfigurationKeyVPNStartArgs, "VPNSTARTARGS"),
    CONSTANT(gsc_IntranetConfigurationKeyVPNStop, "VPNSTOPCOMMAND"),
    CONSTANT(gsc_IntranetConfigurationKeyVPNStopArgs, "VPNSTOPARGS"),
    CONSTANT(gsc_IntranetConfigurationKeyMonitoringAddress, "MONITORING_ADDRESS"),
    CONSTANT(gsc_IntranetConfigurationKeyMonitoringType, "MONITORING_TYPE"),
    CONSTANT(gsc_IntranetConfigurationValueMonitoringTypeNone, "NONE"),
    CONSTANT(gsc_IntranetConfigurationValueMonitoringTypeIP, "IP"),
    CONSTANT(gsc_IntranetConfigurationValueMonitoringTypeDNS, "DNS"),
};

class CompanyNetworkConstants : public testing::TestWithParam<Constant> {};

} // namespace

TEST_P(CompanyNetworkConstants, HasTheTextOfTheFiles)
{
    EXPECT_EQ(GetParam().value, GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    All, CompanyNetworkConstants, testing::ValuesIn(all),
    [](const auto& test) { return test.param.name; });
