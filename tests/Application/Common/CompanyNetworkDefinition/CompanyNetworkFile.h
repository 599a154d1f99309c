#pragma once

#include "CompanyNetworkConfiguration.h"
#include "PublishedTracer.h"
#include "TemporaryFolder.h"

#include <list>
#include <string>

#include <gtest/gtest.h>

using Names = std::list<std::string>;

inline constexpr const char* FILE_NAME = "CompanyNetworkConfiguration.cfg";

inline const std::string fileBegin = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                                     "<plist version=\"1.0\">\n"
                                     "<dict>\n";
inline const std::string fileEnd = "</dict>\n"
                                   "</plist>";

/// The lines of a network that has a display name only.
inline std::string network(const std::string& key, const std::string& name)
{
    return "\t<key>" + key +
           "</key>\n"
           "\t<dict>\n"
           "\t\t<key>Name</key>\n"
           "\t\t<string>" +
           name +
           "</string>\n"
           "\t</dict>\n";
}

/// A folder for the configuration file of one test; there is none at first.
class CompanyNetworkFile : public testing::Test {
protected:
    Names namesOf(const std::string& content) const
    {
        folder.write(FILE_NAME, content);
        return CompanyNetworkConfiguration(folder.path()).getCompanyNetworkNameList();
    }
    std::string content() const { return folder.read(FILE_NAME); }
    /// Whether the configuration is empty and the trace says that there is no file.
    bool isReadAsNoFile() const
    {
        const PublishedTracer tracer;
        const bool isEmpty = CompanyNetworkConfiguration(folder.path()).empty();
        const std::string lines = tracer.lines();
        const std::size_t told = lines.find(">> [D] No CompanyNetworkConfiguration file.\n");
        return isEmpty && told != std::string::npos &&
               lines.find("Error parsing") == std::string::npos;
    }

    TemporaryFolder folder;
};
