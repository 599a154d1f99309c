#pragma once

#include "DictionaryConfiguration.h"

/// The proxy of a dedicated APN: its address and its port, a decimal text.
class ProxyConfiguration : public DictionaryConfiguration {
public:
    explicit ProxyConfiguration(Dictionary* dictionary);
    ProxyConfiguration(const ProxyConfiguration& other);
    ProxyConfiguration& operator=(const ProxyConfiguration& other) = default;
    ~ProxyConfiguration() override;

    /// The dictionary of a proxy section.
    static Dictionary makeDictionary(const std::string& address, const std::string& port);

    std::string getAddress() const;
    void setAddress(const std::string& address);

    std::string getport() const;
    void setport(const std::string& port);
};
