#pragma once

#include "PrivateDataFolders.h"

#include <filesystem>
#include <string>
#include <string_view>

/// The configuration file of one test, in an all-users data folder of its own; there is none at
/// first.
class ConfigurationPlace {
public:
    ConfigurationPlace()
    {
        std::error_code ignored;
        std::filesystem::create_directories(m_folders.allUsers().file("Pelora"), ignored);
    }

    std::string path() const { return m_folders.allUsers().file(m_name); }
    bool exists() const { return std::filesystem::exists(path()); }
    std::string read() const { return m_folders.allUsers().read(m_name); }
    void write(std::string_view content) const { m_folders.allUsers().write(m_name, content); }

private:
    const std::string m_name = "Pelora/CompanyNetworkConfiguration.cfg";
    PrivateDataFolders m_folders;
};
