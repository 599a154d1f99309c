#include "TavConfigurationModel.h"

#include "AlertPresenter.h"
#include "CallMarker.h"
#include "CompanyNetworkConfiguration.h"
#include "CompanyNetworkConstants.h"
#include "CompanyNetworkDefinition.h"
#include "Localizer.h"
#include "MonitoringConfiguration.h"
#include "TavConfigurationMessages.h"
#include "VPNConfiguration.h"

TavConfigurationModel::TavConfigurationModel(
    TavConfigurationMessages* controller, AlertPresenter* alertPresenter)
    : m_pController(controller), m_pAlertPresenter(alertPresenter)
{
    CallMarker marker("TavConfigurationModel", "TavConfigurationModel::constructor", true, this);
    m_pConfiguration = std::make_unique<CompanyNetworkConfiguration>("");
    if (m_pConfiguration->empty())
        m_pConfiguration->addCompanyNetwork(gsc_DefaultCompanyName);
    m_pNetwork = m_pConfiguration->getCompanyNetwork("");
}

TavConfigurationModel::~TavConfigurationModel()
{
    CallMarker marker("TavConfigurationModel", "TavConfigurationModel::destructor", false, this);
    m_pConfiguration.reset();
}

void TavConfigurationModel::loadFromPersistence()
{
    CallMarker marker("TavConfigurationModel::loadFromPersistence", this);
    std::string startCommandLine;
    std::string startArguments;
    std::string stopCommandLine;
    std::string stopArguments;
    if (VPNConfiguration* const vpn = m_pNetwork->getPublicVPN()) {
        startCommandLine = vpn->getStartCmdLine();
        startArguments = vpn->getStartArgs();
        stopCommandLine = vpn->getStopCmdLine();
        stopArguments = vpn->getStopArgs();
    }
    m_pController->fillStartCommandLine(startCommandLine, startArguments);
    m_pController->fillSopCommandLine(stopCommandLine, stopArguments);

    std::string address;
    if (MonitoringConfiguration* const monitoring = m_pNetwork->getMonitoringConfiguration())
        address = monitoring->getAddress();
    m_pController->fillMonitoringAddress(address);
}

void TavConfigurationModel::saveToPersistence(
    bool vpnSelected, const std::string& startCommandLine, const std::string& startArguments,
    const std::string& stopCommandLine, const std::string& stopArguments, bool monitoringSelected,
    const std::string& monitoringAddress)
{
    CallMarker marker("TavConfigurationModel::saveToPersistence", this);
    if (vpnSelected && (startCommandLine.empty() || stopCommandLine.empty())) {
        showAlert("MSGOK_DLG_FILL_BOTH_COMMAND_LINE");
        return;
    }
    if (monitoringSelected && monitoringAddress.empty()) {
        showAlert("MSGOK_DLG_FILL_CORRECT_IP_ADDRESS");
        return;
    }
    m_pNetwork->updatePublicVpn(
        vpnSelected, startCommandLine, startArguments, stopCommandLine, stopArguments);
    m_pNetwork->updateMonitoringConfiguration(
        monitoringSelected, COMPANY_NETWORK_MONITORING_TYPE_IP, monitoringAddress);
    m_pConfiguration->writeDefinition("");
    m_pController->closeApplication();
}

bool TavConfigurationModel::isVpnSelected() const
{
    CallMarker marker("TavConfigurationModel::isVpnSelected", this);
    VPNConfiguration* const vpn = m_pNetwork->getPublicVPN();
    return vpn != nullptr && vpn->isActivated();
}

bool TavConfigurationModel::isMonitoringSelected() const
{
    CallMarker marker("TavConfigurationModel::isMonitoringSelected", this);
    MonitoringConfiguration* const monitoring = m_pNetwork->getMonitoringConfiguration();
    return monitoring != nullptr && monitoring->isActivated();
}

std::optional<std::string> TavConfigurationModel::onBrowseAction()
{
    CallMarker marker("TavConfigurationModel::onBrowseAction", this);
    return m_pController->browseAction();
}

void TavConfigurationModel::cancelApplication()
{
    CallMarker marker("TavConfigurationModel::cancelApplication", this);
    m_pController->closeApplication();
}

void TavConfigurationModel::showAlert(const char* key)
{
    CallMarker marker("TavConfigurationModel::showAlert", this);
    Localizer* const localizer = Localizer::getInstance();
    const std::string title = localizer->getLocalizedString("MSGOK_DLG_TITLE");
    m_pAlertPresenter->showAlert(
        AlertPresenter::Level::note, title, localizer->getLocalizedString(key));
}
