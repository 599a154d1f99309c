#pragma once

#include "TavConfigurationMessages.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

/// Records the messages of the model, in their order, and answers as told.
class RecordingController : public TavConfigurationMessages {
public:
    void fillStartCommandLine(const std::string& commandLine, const std::string& arguments) override
    {
        messages.push_back("fillStartCommandLine " + commandLine + "|" + arguments);
    }
    void fillSopCommandLine(const std::string& commandLine, const std::string& arguments) override
    {
        messages.push_back("fillSopCommandLine " + commandLine + "|" + arguments);
    }
    void fillMonitoringAddress(const std::string& address) override
    {
        messages.push_back("fillMonitoringAddress " + address);
    }
    void closeApplication() override
    {
        messages.emplace_back("closeApplication");
        if (atClose)
            atClose();
    }
    std::optional<std::string> browseAction() override
    {
        messages.emplace_back("browseAction");
        return chosenFile;
    }

    std::vector<std::string> messages;
    std::optional<std::string> chosenFile;
    std::function<void()> atClose;
};
