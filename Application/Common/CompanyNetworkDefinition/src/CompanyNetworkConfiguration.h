#pragma once

#include "CompanyNetworkDefinition.h"

#include <list>
#include <memory>
#include <string>

/// The company networks of one configuration file, in memory.
///
/// A file that is missing or bad gives the networks that could be read, if any; nothing is written
/// unless asked for, and a write that fails is silent. The configuration owns its networks: each
/// pointer handed out stays valid until the configuration ends, also after its network was deleted.
/// Used from the main thread only.
class CompanyNetworkConfiguration {
public:
    /// Reads the file of the folder; an empty folder stands for the all-users data folder.
    explicit CompanyNetworkConfiguration(const std::string& folder);
    virtual ~CompanyNetworkConfiguration();

    CompanyNetworkConfiguration(const CompanyNetworkConfiguration&) = delete;
    CompanyNetworkConfiguration& operator=(const CompanyNetworkConfiguration&) = delete;

    /// The full path of the folder's configuration file.
    std::string getConfigurationFile(const std::string& folder) const;

    /// Appends the networks of the folder's file to the list.
    void readConfiguration(const std::string& folder);
    /// Writes the whole list into the folder's file. The all-users data folder is made when it is
    /// missing; no other folder is.
    void writeDefinition(const std::string& folder) const;

    bool empty() const;
    /// In the order of the file, then in the order of addition.
    const std::list<CompanyNetworkDefinition*>& getCompanyNetworkList() const;
    /// The display names, in the order of the list.
    std::list<std::string> getCompanyNetworkNameList() const;
    /// The first network of that display name; the first of all for an empty name. Null when there
    /// is no network at all, KFCompanyNetworkNotFoundException when only the name is unknown.
    CompanyNetworkDefinition* getCompanyNetwork(const std::string& name) const;

    /// Appends a network without sections, under the first free key.
    CompanyNetworkDefinition* addCompanyNetwork(const std::string& name);
    /// Appends a copy of the network, under the first free key.
    CompanyNetworkDefinition* addCompanyNetwork(const CompanyNetworkDefinition& definition);
    /// Takes every network of that display name off the list.
    void deleteCompanyNetwork(const std::string& name);
    /// The first of "Company1", "Company2", ... that no network has as its key.
    std::string createAvailableCompanyNetworkDicName() const;

private:
    CompanyNetworkDefinition* append(std::unique_ptr<CompanyNetworkDefinition> definition);

    std::list<CompanyNetworkDefinition*> m_networks;
    /// Every network that ever was on the list.
    std::list<std::unique_ptr<CompanyNetworkDefinition>> m_definitions;
};
