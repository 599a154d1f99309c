#pragma once

#include <optional>
#include <string>

/// The five messages by which the model reaches the window: all that it knows of it. Texts are
/// UTF-8.
class TavConfigurationMessages {
public:
    virtual ~TavConfigurationMessages() = default;

    virtual void fillStartCommandLine(
        const std::string& commandLine, const std::string& arguments) = 0;
    // Kept: the message's name lacks a letter.
    virtual void fillSopCommandLine(
        const std::string& commandLine, const std::string& arguments) = 0;
    virtual void fillMonitoringAddress(const std::string& address) = 0;
    /// Ends the application.
    virtual void closeApplication() = 0;
    /// The path of the file that the user chose; nothing when the choice was cancelled.
    virtual std::optional<std::string> browseAction() = 0;
};
