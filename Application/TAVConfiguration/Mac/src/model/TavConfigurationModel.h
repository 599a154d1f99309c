#pragma once

#include <memory>
#include <optional>
#include <string>

class AlertPresenter;
class CompanyNetworkConfiguration;
class CompanyNetworkDefinition;
class TavConfigurationMessages;

/// What the configuration window edits: the VPN and the monitoring of one company network, the
/// first of the configuration file in the default folder.
///
/// The file is read once, at construction; a file without any network yields a new one named
/// "Intranet". It is written by a successful save alone, which ends the application. The controller
/// and the alert presenter are not owned and outlive the model. What the company networks throw is
/// passed on. Main thread only.
class TavConfigurationModel {
public:
    TavConfigurationModel(TavConfigurationMessages* controller, AlertPresenter* alertPresenter);
    ~TavConfigurationModel();

    TavConfigurationModel(const TavConfigurationModel&) = delete;
    TavConfigurationModel& operator=(const TavConfigurationModel&) = delete;

    /// Fills the window's fields. What is switched on is asked for apart.
    void loadFromPersistence();

    /// Writes the file and closes the application, also when the file could not be written. Shows
    /// an alert instead when a selected VPN lacks a command line or selected monitoring its
    /// address.
    void saveToPersistence(
        bool vpnSelected, const std::string& startCommandLine, const std::string& startArguments,
        const std::string& stopCommandLine, const std::string& stopArguments,
        bool monitoringSelected, const std::string& monitoringAddress);

    bool isVpnSelected() const;
    bool isMonitoringSelected() const;

    /// Has the user choose a file; nothing when the choice was cancelled.
    std::optional<std::string> onBrowseAction();

    /// Closes the application without writing.
    void cancelApplication();

private:
    void showAlert(const char* key);

    TavConfigurationMessages* m_pController;
    AlertPresenter* m_pAlertPresenter;
    std::unique_ptr<CompanyNetworkConfiguration> m_pConfiguration;
    CompanyNetworkDefinition* m_pNetwork = nullptr;
};
