#pragma once

#include <string>

/// The values of a configuration file with one network, and the file's bytes.
struct NetworkText {
    std::string vpnActivated = "false";
    std::string startCommandLine = "";
    std::string startArguments = "";
    std::string stopCommandLine = "";
    std::string stopArguments = "";
    std::string monitoringActivated = "false";
    std::string address = "";
    std::string name = "Intranet";

    std::string bytes() const
    {
        return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
               "<plist version=\"1.0\">\n"
               "<dict>\n"
               "\t<key>Company1</key>\n"
               "\t<dict>\n"
               "\t\t<key>Monitoring</key>\n"
               "\t\t<dict>\n"
               "\t\t\t<key>Activated</key>\n"
               "\t\t\t<string>" +
               monitoringActivated +
               "</string>\n"
               "\t\t\t<key>Address</key>\n"
               "\t\t\t<string>" +
               address +
               "</string>\n"
               "\t\t\t<key>Type</key>\n"
               "\t\t\t<string>IP</string>\n"
               "\t\t</dict>\n"
               "\t\t<key>Name</key>\n"
               "\t\t<string>" +
               name +
               "</string>\n"
               "\t\t<key>PublicVPN</key>\n"
               "\t\t<dict>\n"
               "\t\t\t<key>Activated</key>\n"
               "\t\t\t<string>" +
               vpnActivated +
               "</string>\n"
               "\t\t\t<key>StartArguments</key>\n"
               "\t\t\t<string>" +
               startArguments +
               "</string>\n"
               "\t\t\t<key>StartCommandLine</key>\n"
               "\t\t\t<string>" +
               startCommandLine +
               "</string>\n"
               "\t\t\t<key>StopArguments</key>\n"
               "\t\t\t<string>" +
               stopArguments +
               "</string>\n"
               "\t\t\t<key>StopCommandLine</key>\n"
               "\t\t\t<string>" +
               stopCommandLine +
               "</string>\n"
               "\t\t</dict>\n"
               "\t</dict>\n"
               "</dict>\n"
               "</plist>";
    }
};
