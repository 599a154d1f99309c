#pragma once

#include "ProxyConfiguration.h"
#include "VPNConfiguration.h"

/// The dedicated APN section: access point, credentials, name servers, and the sub-sections proxy
/// and private VPN.
///
/// While the section is in memory its own dictionary holds the leaf entries only; the sub-sections
/// are objects of their own, owned by it, and join it again in getDictionary().
class DedicatedAPNConfiguration : public DictionaryConfiguration {
public:
    explicit DedicatedAPNConfiguration(Dictionary* dictionary);
    DedicatedAPNConfiguration(const DedicatedAPNConfiguration& other);
    /// Assigned to itself the section loses its leaf entries and keeps its sub-sections.
    DedicatedAPNConfiguration& operator=(const DedicatedAPNConfiguration& other);
    ~DedicatedAPNConfiguration() override;

    /// The dictionary of a dedicated APN section with a proxy, without a private VPN.
    static Dictionary makeDictionary(
        const std::string& apn, bool userSpecificCredentials, const std::string& login,
        const std::string& password, const std::string& dns1, const std::string& dns2,
        const std::string& proxyAddress, const std::string& proxyPort);

    /// The whole section as one new tree, sub-sections included.
    std::unique_ptr<Dictionary> getDictionary() const;

    /// Null when the section has none.
    VPNConfiguration* getPrivateVPN() const;
    /// Replaces the private VPN; pointers to the one held before end here.
    void setPrivateVpn(
        bool activated, const std::string& start, const std::string& startArgs,
        const std::string& stop, const std::string& stopArgs);

    /// Null when the section has none.
    ProxyConfiguration* getProxyConfiguration() const;

    std::string getAPN() const;
    void setAPN(const std::string& apn);

    std::string getDNS1() const;
    void setDNS1(const std::string& dns1);

    std::string getDNS2() const;
    void setDNS2(const std::string& dns2);

    std::string getLogin() const;
    void setLogin(const std::string& login);

    std::string getPassword() const;
    void setPassword(const std::string& password);

    bool isUserSpecificCredentials() const;
    void enableUserSpecificCredentials(bool enabled);

private:
    std::unique_ptr<VPNConfiguration> m_privateVPN;
    std::unique_ptr<ProxyConfiguration> m_proxy;
};
