#pragma once

#include "DictionaryConfiguration.h"

/// A VPN section: the command lines that start and stop the VPN, with their arguments. The public
/// VPN of a network and the private VPN of a dedicated APN have the same keys.
class VPNConfiguration : public DictionaryConfiguration {
public:
    explicit VPNConfiguration(Dictionary* dictionary);
    VPNConfiguration(const VPNConfiguration& other);
    VPNConfiguration& operator=(const VPNConfiguration& other) = default;
    ~VPNConfiguration() override;

    /// The dictionary of a VPN section, under the name given.
    static Dictionary makeDictionary(
        const std::string& name, bool activated, const std::string& start,
        const std::string& startArgs, const std::string& stop, const std::string& stopArgs);

    std::string getStartCmdLine() const;
    void setStartCmdLine(const std::string& commandLine);

    std::string getStartArgs() const;
    void setStartArgs(const std::string& arguments);

    std::string getStopCmdLine() const;
    void setStopCmdLine(const std::string& commandLine);

    std::string getStopArgs() const;
    void setStopArgs(const std::string& arguments);

    bool isActivated() const;
    void setActivated(bool activated);
};
