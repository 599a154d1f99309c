#pragma once

/// Keys and values of the company network file. All values are texts; keys name leaf entries,
/// except those of a section, which name a dictionary.

inline constexpr const char* COMPANY_NETWORK_CONFIGURATION_FILE = "CompanyNetworkConfiguration.cfg";

/// Stem of the dictionary names that are given to new networks: "Company1", "Company2", ...
inline constexpr const char* COMPANY_NAME_TEMPLATE = "Company";
inline constexpr const char* COMPANY_NETWORK_NAME = "Name";

inline constexpr const char* COMPANY_NETWORK_MONITORING = "Monitoring";
inline constexpr const char* COMPANY_NETWORK_MONITORING_ACTIVATED = "Activated";
inline constexpr const char* COMPANY_NETWORK_MONITORING_TYPE = "Type";
inline constexpr const char* COMPANY_NETWORK_MONITORING_TYPE_NONE = "NONE";
inline constexpr const char* COMPANY_NETWORK_MONITORING_TYPE_IP = "IP";
inline constexpr const char* COMPANY_NETWORK_MONITORING_TYPE_DNS = "DNS";
inline constexpr const char* COMPANY_NETWORK_MONITORING_TYPE_HTTP = "HTTP";
inline constexpr const char* COMPANY_NETWORK_MONITORING_ADDRESS = "Address";

/// The keys of a VPN section are those of the public and of the private VPN.
inline constexpr const char* COMPANY_NETWORK_PUBLICVPN = "PublicVPN";
inline constexpr const char* COMPANY_NETWORK_VPN_ACTIVATED = "Activated";
inline constexpr const char* COMPANY_NETWORK_VPN_STARTCMDLINE = "StartCommandLine";
inline constexpr const char* COMPANY_NETWORK_VPN_STARTARGS = "StartArguments";
inline constexpr const char* COMPANY_NETWORK_VPN_STOPCMDLINE = "StopCommandLine";
inline constexpr const char* COMPANY_NETWORK_VPN_STOPARGS = "StopArguments";

/// Login and password are kept as plain texts; the proxy's port is a decimal text.
inline constexpr const char* COMPANY_NETWORK_DEDICATEDAPN = "DedicatedAPN";
inline constexpr const char* COMPANY_NETWORK_DEDICATEDAPN_APN = "APN";
inline constexpr const char* COMPANY_NETWORK_DEDICATEDAPN_USERSPECIFIC_CREDENTIALS =
    "UserSpecificCredentials";
inline constexpr const char* COMPANY_NETWORK_DEDICATEDAPN_LOGIN = "Login";
inline constexpr const char* COMPANY_NETWORK_DEDICATEDAPN_PASSWORD = "Password";
inline constexpr const char* COMPANY_NETWORK_DEDICATEDAPN_DNS1 = "DNS1";
inline constexpr const char* COMPANY_NETWORK_DEDICATEDAPN_DNS2 = "DNS2";
inline constexpr const char* COMPANY_NETWORK_DEDICATEDAPN_PROXY = "Proxy";
inline constexpr const char* COMPANY_NETWORK_DEDICATEDAPN_PROXY_ADDRESS = "Address";
inline constexpr const char* COMPANY_NETWORK_DEDICATEDAPN_PROXY_PORT = "Port";
inline constexpr const char* COMPANY_NETWORK_DEDICATEDAPN_PRIVATEVPN = "PrivateVPN";

inline constexpr const char* EMPTY_STRING = "";
inline constexpr const char* FALSE_BOOLEAN_STRING = "false";
inline constexpr const char* TRUE_BOOLEAN_STRING = "true";
inline constexpr const char* ZERO_INT_STRING = "0";

/// The name of the network that is made when the file holds none.
inline constexpr const char* gsc_DefaultCompanyName = "Intranet";

/// The older, flat keys of the intranet settings domain.
inline constexpr const char* gsc_IntranetConfigurationDomain = "Intranet";
inline constexpr const char* gsc_IntranetConfigurationKeyVPNSelected = "VPNSELECTED";
inline constexpr const char* gsc_IntranetConfigurationKeyVPNStart = "VPNSTARTCOMMAND";
inline constexpr const char* gsc_IntranetConfigurationKeyVPNStartArgs = "VPNSTARTARGS";
inline constexpr const char* gsc_IntranetConfigurationKeyVPNStop = "VPNSTOPCOMMAND";
inline constexpr const char* gsc_IntranetConfigurationKeyVPNStopArgs = "VPNSTOPARGS";
inline constexpr const char* gsc_IntranetConfigurationKeyMonitoringAddress = "MONITORING_ADDRESS";
inline constexpr const char* gsc_IntranetConfigurationKeyMonitoringType = "MONITORING_TYPE";
inline constexpr const char* gsc_IntranetConfigurationValueMonitoringTypeNone = "NONE";
inline constexpr const char* gsc_IntranetConfigurationValueMonitoringTypeIP = "IP";
inline constexpr const char* gsc_IntranetConfigurationValueMonitoringTypeDNS = "DNS";
