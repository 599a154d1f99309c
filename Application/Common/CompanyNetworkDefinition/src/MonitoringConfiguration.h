#pragma once

#include "DictionaryConfiguration.h"

/// The monitoring section: whether the connection is probed, how, and at which address.
class MonitoringConfiguration : public DictionaryConfiguration {
public:
    explicit MonitoringConfiguration(Dictionary* dictionary);
    MonitoringConfiguration(const MonitoringConfiguration& other);
    MonitoringConfiguration& operator=(const MonitoringConfiguration& other) = default;
    ~MonitoringConfiguration() override;

    /// The dictionary of a monitoring section.
    static Dictionary makeDictionary(
        bool activated, const std::string& type, const std::string& address);

    std::string getAddress() const;
    void setAddress(const std::string& address);

    /// 1 for the type "IP", 2 for "DNS", 0 for every other text.
    int getType() const;
    void setType(const std::string& type);

    bool isActivated() const;
    void setActivated(bool activated);
};
