#pragma once

#include "DedicatedAPNConfiguration.h"
#include "MonitoringConfiguration.h"
#include "VPNConfiguration.h"

/// One company network in memory: its key in the file, its display name, and up to three sections.
///
/// Owns its sections; the pointers it hands out stay its own and end when the section is updated,
/// assigned or destroyed. Used by one thread at a time. A missing section never fails a getter; a
/// setter that needs one it does not have is a contract violation, and does nothing where that
/// signal is blocked.
class CompanyNetworkDefinition {
public:
    /// Reads the network's dictionary, which stays the caller's and must not be null.
    explicit CompanyNetworkDefinition(Dictionary* dict);
    CompanyNetworkDefinition(const CompanyNetworkDefinition& other);
    /// A copy under another key; the display name stays the other's.
    CompanyNetworkDefinition(const CompanyNetworkDefinition& other, const std::string& name);
    CompanyNetworkDefinition& operator=(const CompanyNetworkDefinition& other);
    virtual ~CompanyNetworkDefinition();

    /// The network's key in the file.
    const std::string& getDictionnaryName() const;
    /// The display name.
    const std::string& getCompanyName() const;
    /// Null when there is no such section.
    VPNConfiguration* getPublicVPN() const;
    MonitoringConfiguration* getMonitoringConfiguration() const;

    /// Whether there is a public VPN that is activated.
    bool hasPublicVPN() const;
    /// Whether there is a dedicated APN section, whatever its content.
    bool hasDedicatedAPN() const;
    bool isDedicatedApnWithUserSpecificCredentials() const;
    std::string getDedicatedAPN() const;
    std::string getDedicatedAPNLogin() const;
    std::string getDedicatedAPNPassword() const;
    std::string getDedicatedAPNDNS1() const;
    std::string getDedicatedAPNDNS2() const;
    VPNConfiguration* getDedicatedAPNPrivateVPN() const;
    ProxyConfiguration* getDedicatedAPNProxyConfiguration() const;

    void updatePublicVpn(
        bool activated, const std::string& start, const std::string& startArgs,
        const std::string& stop, const std::string& stopArgs);
    void updateMonitoringConfiguration(
        bool activated, const std::string& type, const std::string& address);
    /// The new section has no private VPN: updateDedicatedApnPrivateVpn() adds one.
    void updateDedicatedApn(
        const std::string& apn, bool userSpecificCredentials, const std::string& login,
        const std::string& password, const std::string& dns1, const std::string& dns2,
        const std::string& proxyAddress, const std::string& proxyPort);
    /// Requires a dedicated APN.
    void updateDedicatedApnPrivateVpn(
        bool activated, const std::string& start, const std::string& startArgs,
        const std::string& stop, const std::string& stopArgs);
    /// Requires a dedicated APN.
    void setDedicatedAPNLogin(const std::string& login);
    /// Requires a dedicated APN.
    void setDedicatedAPNPassword(const std::string& password);

    /// Gives every section its default content; the names stay.
    void createEmptyCompany();

    /// The whole network as one new tree, without the sections that are missing.
    std::unique_ptr<Dictionary> getDictionary() const;

private:
    std::string m_dictionaryName;
    std::string m_companyName;
    std::unique_ptr<VPNConfiguration> m_publicVPN;
    std::unique_ptr<MonitoringConfiguration> m_monitoring;
    std::unique_ptr<DedicatedAPNConfiguration> m_dedicatedAPN;
};
