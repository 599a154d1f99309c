#include "CompanyNetworkConfiguration.h"

#include "AppData.h"
#include "CallMarker.h"
#include "CompanyNetworkConstants.h"
#include "DictionaryIterator.h"
#include "FileSystemManagement.h"
#include "KFCompanyNetworkNotFoundException.h"
#include "KFDictionaryFileException.h"
#include "KFDictionaryParsingException.h"
#include "Logger.h"

#include <set>
#include <utility>

namespace {

constexpr const char* UNIT =
    "Application/Common/CompanyNetworkDefinition/src/CompanyNetworkConfiguration";

} // namespace

CompanyNetworkConfiguration::CompanyNetworkConfiguration(const std::string& folder)
{
    CallMarker marker(
        "CompanyNetworkConfiguration", "CompanyNetworkConfiguration::constructor", true, this);
    readConfiguration(folder);
}

CompanyNetworkConfiguration::~CompanyNetworkConfiguration()
{
    CallMarker marker(
        "CompanyNetworkConfiguration", "CompanyNetworkConfiguration::destructor", false, this);
}

std::string CompanyNetworkConfiguration::getConfigurationFile(const std::string& folder) const
{
    CallMarker marker("CompanyNetworkConfiguration::getConfigurationFile", this);
    if (folder.empty())
        return AppData("").getAllUsersDataPath() + COMPANY_NETWORK_CONFIGURATION_FILE;

    const char separator = FileSystemManagement::getFolderSeparator();
    std::string path = folder;
    if (path.length() > 3 && path.back() == separator)
        path.pop_back();
    if (path.back() != separator)
        path += separator;
    return path + COMPANY_NETWORK_CONFIGURATION_FILE;
}

void CompanyNetworkConfiguration::readConfiguration(const std::string& folder)
{
    CallMarker marker("CompanyNetworkConfiguration::readConfiguration", this);
    const std::string path = getConfigurationFile(folder);
    try {
        Dictionary root;
        root.loadFromFile(path);
        DictionaryIterator entry(root);
        for (entry.firstDictionary(); !entry.atEnd(); entry.nextDictionary())
            append(std::make_unique<CompanyNetworkDefinition>(entry.currentDictionary()));
    } catch (const KFDictionaryFileException&) {
        TAV_TRACE(marker, TraceMsgType::D, "No CompanyNetworkConfiguration file.");
        TAV_LOG(LoggerMsgType::WARNING, "No company netword defined.");
    } catch (const KFDictionaryParsingException&) {
        TAV_TRACE(
            marker, TraceMsgType::W, "Error parsing CompanyNetworkConfiguration file : '%s'",
            path.c_str());
        TAV_LOG(LoggerMsgType::WARNING, "Error parsing company network configuration file.");
    }
}

void CompanyNetworkConfiguration::writeDefinition(const std::string& folder) const
{
    CallMarker marker("CompanyNetworkConfiguration::writeDefinition", this);
    Dictionary root;
    for (const CompanyNetworkDefinition* network : m_networks) {
        const std::unique_ptr<Dictionary> dictionary = network->getDictionary();
        root.setItem(dictionary->getName(), *dictionary);
    }
    if (folder.empty())
        AppData("").createAllUsersDataFolder();
    root.saveToFile(getConfigurationFile(folder));
}

bool CompanyNetworkConfiguration::empty() const
{
    CallMarker marker("CompanyNetworkConfiguration::empty", this);
    return m_networks.empty();
}

const std::list<CompanyNetworkDefinition*>& CompanyNetworkConfiguration::getCompanyNetworkList()
    const
{
    CallMarker marker("CompanyNetworkConfiguration::getCompanyNetworkList", this);
    return m_networks;
}

std::list<std::string> CompanyNetworkConfiguration::getCompanyNetworkNameList() const
{
    CallMarker marker("CompanyNetworkConfiguration::getCompanyNetworkNameList", this);
    std::list<std::string> names;
    for (const CompanyNetworkDefinition* network : m_networks)
        names.push_back(network->getCompanyName());
    return names;
}

CompanyNetworkDefinition* CompanyNetworkConfiguration::getCompanyNetwork(
    const std::string& name) const
{
    CallMarker marker("CompanyNetworkConfiguration::getCompanyNetwork", this);
    if (m_networks.empty())
        return nullptr;
    if (name.empty())
        return m_networks.front();
    for (CompanyNetworkDefinition* network : m_networks) {
        if (network->getCompanyName() == name)
            return network;
    }
    throw KFCompanyNetworkNotFoundException(UNIT, 94);
}

CompanyNetworkDefinition* CompanyNetworkConfiguration::addCompanyNetwork(const std::string& name)
{
    CallMarker marker("CompanyNetworkConfiguration::addCompanyNetwork", this);
    Dictionary dictionary(createAvailableCompanyNetworkDicName());
    dictionary.addValue(COMPANY_NETWORK_NAME, name);
    return append(std::make_unique<CompanyNetworkDefinition>(&dictionary));
}

CompanyNetworkDefinition* CompanyNetworkConfiguration::addCompanyNetwork(
    const CompanyNetworkDefinition& definition)
{
    CallMarker marker("CompanyNetworkConfiguration::addCompanyNetwork", this);
    return append(std::make_unique<CompanyNetworkDefinition>(
        definition, createAvailableCompanyNetworkDicName()));
}

void CompanyNetworkConfiguration::deleteCompanyNetwork(const std::string& name)
{
    CallMarker marker("CompanyNetworkConfiguration::deleteCompanyNetwork", this);
    // The definitions live on: callers may still hold pointers to them.
    m_networks.remove_if([&name](const CompanyNetworkDefinition* network) {
        return network->getCompanyName() == name;
    });
}

std::string CompanyNetworkConfiguration::createAvailableCompanyNetworkDicName() const
{
    CallMarker marker("CompanyNetworkConfiguration::createAvailableCompanyNetworkDicName", this);
    std::set<std::string> taken;
    for (const CompanyNetworkDefinition* network : m_networks)
        taken.insert(network->getDictionnaryName());
    int number = 1;
    while (taken.count(COMPANY_NAME_TEMPLATE + std::to_string(number)) != 0)
        ++number;
    return COMPANY_NAME_TEMPLATE + std::to_string(number);
}

CompanyNetworkDefinition* CompanyNetworkConfiguration::append(
    std::unique_ptr<CompanyNetworkDefinition> definition)
{
    CallMarker marker("CompanyNetworkConfiguration::append", this);
    m_definitions.push_back(std::move(definition));
    m_networks.push_back(m_definitions.back().get());
    return m_networks.back();
}
