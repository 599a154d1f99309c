#pragma once

#include "IPAddressEntryFormatter.h"
#include "TavConfigurationMessages.h"

#include <QObject>

#include <memory>

class AlertPresenter;
class QDialog;
class TavConfigurationModel;
class ValueField;

namespace Ui {
class TavConfigurationWindow;
}

/// The controller of the configuration window: fills it, hands the user's actions to the model, and
/// carries out the model's messages.
///
/// It puts its controls into the window, which it does not own and which outlives it; it owns the
/// model. What model and localizer throw is passed on. Main thread only.
class TavConfigurationController : public QObject, public TavConfigurationMessages {
    Q_OBJECT

public:
    TavConfigurationController(QDialog& window, AlertPresenter& alertPresenter);
    ~TavConfigurationController() override;

    /// Sets the window up from the localization and configuration files, anew when it is called
    /// again, and brings it to the front. The controls do nothing before.
    void awakeFromNib();

    void onWithVPN();
    void onWithoutVPN();
    void onEnableMonitoring();
    void onDisableMonitoring();
    void browseStartScript();
    void browseStopScript();
    void save();
    void cancel();

    void fillStartCommandLine(
        const std::string& commandLine, const std::string& arguments) override;
    void fillSopCommandLine(const std::string& commandLine, const std::string& arguments) override;
    void fillMonitoringAddress(const std::string& address) override;
    void closeApplication() override;
    std::optional<std::string> browseAction() override;

protected:
    bool eventFilter(QObject* object, QEvent* event) override;

private:
    void connectActions();
    void showVpnChoice();
    void showMonitoringChoice();
    void enableVpn(bool enabled);
    void colourVpnLabels();
    void browse(ValueField& field);
    void indentChoices();
    void fitWindow();
    void keepTextsWhole();

    QDialog& m_window;
    AlertPresenter& m_alertPresenter;
    std::unique_ptr<Ui::TavConfigurationWindow> m_pOutlets;
    std::unique_ptr<TavConfigurationModel> m_pModel;
    IPAddressEntryFormatter m_IPAddressFormatter;
    bool m_vpnLabelsAreGray = false;
};
