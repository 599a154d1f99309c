#include "TavConfigurationController.h"

#include "CallMarker.h"
#include "TavConfigurationModel.h"
#include "WindowTexts.h"
#include "ui_TavConfigurationWindow.h"

#include <QEvent>
#include <QFileDialog>
#include <QStyle>

#include <initializer_list>

TavConfigurationController::TavConfigurationController(
    QDialog& window, AlertPresenter& alertPresenter)
    : m_window(window), m_alertPresenter(alertPresenter),
      m_pOutlets(std::make_unique<Ui::TavConfigurationWindow>())
{
    CallMarker marker(
        "TavConfigurationController", "TavConfigurationController::constructor", true, this);
    m_pOutlets->setupUi(&m_window);
}

TavConfigurationController::~TavConfigurationController()
{
    CallMarker marker(
        "TavConfigurationController", "TavConfigurationController::destructor", false, this);
    m_pModel.reset();
}

void TavConfigurationController::awakeFromNib()
{
    CallMarker marker("TavConfigurationController::awakeFromNib", this);
    const bool isFirst = m_pModel == nullptr;
    m_pModel = std::make_unique<TavConfigurationModel>(this, &m_alertPresenter);
    if (isFirst)
        connectActions();
    m_pOutlets->m_IPAddressTextField->setValidator(&m_IPAddressFormatter);
    m_pOutlets->retranslateUi(&m_window); // the keys, in the place of former texts
    WindowTexts::show(*m_pOutlets);
    m_pModel->loadFromPersistence();
    showVpnChoice();
    showMonitoringChoice();
    indentChoices();
    fitWindow();
    m_window.show();
    m_window.raise();
    m_window.activateWindow();
}

// Toggling, not clicking: assistive technology switches a radio button without a click, and so does
// the choice that the file makes.
void TavConfigurationController::connectActions()
{
    CallMarker marker("TavConfigurationController::connectActions", this);
    using Self = TavConfigurationController;
    const auto act = [this](const QRadioButton* choice, void (Self::*action)()) {
        connect(choice, &QRadioButton::toggled, this, [this, action](bool on) {
            if (on)
                (this->*action)();
        });
    };
    act(m_pOutlets->radioButtonsWithVPN, &Self::onWithVPN);
    act(m_pOutlets->radioButtonsWithoutVPN, &Self::onWithoutVPN);
    act(m_pOutlets->radioButtonEnableMonitoring, &Self::onEnableMonitoring);
    act(m_pOutlets->radioButtonDisableMonitoring, &Self::onDisableMonitoring);
    // Tab stops at the chosen cell of a group; the arrow keys lead to the others.
    for (QRadioButton* const choice : m_window.findChildren<QRadioButton*>())
        connect(choice, &QRadioButton::toggled, choice, [choice](bool on) {
            choice->setFocusPolicy(on ? Qt::StrongFocus : Qt::ClickFocus);
        });
    connect(m_pOutlets->browseStartButton, &QPushButton::clicked, this, &Self::browseStartScript);
    connect(m_pOutlets->browseStopButton, &QPushButton::clicked, this, &Self::browseStopScript);
    connect(m_pOutlets->saveButton, &QPushButton::clicked, this, &Self::save);
    connect(m_pOutlets->cancelButton, &QPushButton::clicked, this, &Self::cancel);
    m_window.installEventFilter(this);
    connect(&m_window, &QDialog::rejected, this, &Self::cancel); // Escape, the close button
}

void TavConfigurationController::showVpnChoice()
{
    CallMarker marker("TavConfigurationController::showVpnChoice", this);
    QRadioButton* const choice = m_pModel->isVpnSelected() ? m_pOutlets->radioButtonsWithVPN
                                                           : m_pOutlets->radioButtonsWithoutVPN;
    choice->setChecked(true);
}

void TavConfigurationController::showMonitoringChoice()
{
    CallMarker marker("TavConfigurationController::showMonitoringChoice", this);
    QRadioButton* const choice = m_pModel->isMonitoringSelected()
                                     ? m_pOutlets->radioButtonEnableMonitoring
                                     : m_pOutlets->radioButtonDisableMonitoring;
    choice->setChecked(true);
}

// What belongs to a choice stands below the choice's text.
void TavConfigurationController::indentChoices()
{
    CallMarker marker("TavConfigurationController::indentChoices", this);
    const QRadioButton* const choice = m_pOutlets->radioButtonsWithVPN;
    const int indent = choice->style()->pixelMetric(QStyle::PM_ExclusiveIndicatorWidth) +
                       choice->style()->pixelMetric(QStyle::PM_RadioButtonLabelSpacing);
    m_pOutlets->vpnCommandsLayout->setContentsMargins(indent, 0, 0, 0);
    m_pOutlets->addressLayout->setContentsMargins(indent, 0, 0, 0);
}

// As wide as a usual path asks for, unless the texts are wider, and no higher than they ask for.
void TavConfigurationController::fitWindow()
{
    CallMarker marker("TavConfigurationController::fitWindow", this);
    keepTextsWhole();
    m_window.resize(90 * m_window.fontMetrics().averageCharWidth(), 0);
}

// The window gets never so small that a text is cut.
void TavConfigurationController::keepTextsWhole()
{
    CallMarker marker("TavConfigurationController::keepTextsWhole", this);
    const QLayout* const layout = m_window.layout();
    const int narrowest = layout->totalMinimumSize().width();
    m_window.setMinimumSize(narrowest, layout->totalHeightForWidth(narrowest));
}

void TavConfigurationController::onWithVPN()
{
    CallMarker marker("TavConfigurationController::onWithVPN", this);
    enableVpn(true);
}

void TavConfigurationController::onWithoutVPN()
{
    CallMarker marker("TavConfigurationController::onWithoutVPN", this);
    enableVpn(false);
}

void TavConfigurationController::enableVpn(bool enabled)
{
    CallMarker marker("TavConfigurationController::enableVpn", this);
    for (QWidget* const control : std::initializer_list<QWidget*>{
             m_pOutlets->m_startCommandLineField, m_pOutlets->m_startArgsField,
             m_pOutlets->m_stopCommandLineField, m_pOutlets->m_stopArgsField,
             m_pOutlets->browseStartButton, m_pOutlets->browseStopButton})
        control->setEnabled(enabled);
    m_vpnLabelsAreGray = !enabled;
    colourVpnLabels();
}

// Black and gray are the theme's text colour, full and faint, so that both can be read on a dark
// theme too. Faint is kept at a contrast that ordinary text needs.
void TavConfigurationController::colourVpnLabels()
{
    CallMarker marker("TavConfigurationController::colourVpnLabels", this);
    QPalette palette;
    if (m_vpnLabelsAreGray) {
        QColor gray = m_window.palette().color(QPalette::WindowText);
        gray.setAlphaF(0.55F);
        palette.setColor(QPalette::WindowText, gray);
    }
    for (QLabel* const label :
         {m_pOutlets->m_startCommandLineLabel, m_pOutlets->m_startArgsLabel,
          m_pOutlets->m_stopCommandLineLabel, m_pOutlets->m_stopArgsLabel})
        label->setPalette(palette);
}

// The user may change the theme and its font while the window is open. No call marker: every event
// of the window comes by here, and would fill the trace.
bool TavConfigurationController::eventFilter(QObject* object, QEvent* event)
{
    if (event->type() == QEvent::PaletteChange)
        colourVpnLabels();
    if (event->type() == QEvent::LayoutRequest)
        keepTextsWhole();
    return QObject::eventFilter(object, event);
}

void TavConfigurationController::onEnableMonitoring()
{
    CallMarker marker("TavConfigurationController::onEnableMonitoring", this);
    m_pOutlets->m_IPAddressTextField->setEnabled(true);
}

void TavConfigurationController::onDisableMonitoring()
{
    CallMarker marker("TavConfigurationController::onDisableMonitoring", this);
    m_pOutlets->m_IPAddressTextField->setEnabled(false);
}

void TavConfigurationController::browseStartScript()
{
    CallMarker marker("TavConfigurationController::browseStartScript", this);
    browse(*m_pOutlets->m_startCommandLineField);
}

void TavConfigurationController::browseStopScript()
{
    CallMarker marker("TavConfigurationController::browseStopScript", this);
    browse(*m_pOutlets->m_stopCommandLineField);
}

void TavConfigurationController::browse(ValueField& field)
{
    CallMarker marker("TavConfigurationController::browse", this);
    if (const std::optional<std::string> path = m_pModel->onBrowseAction())
        field.setText(QString::fromStdString(*path));
}

std::optional<std::string> TavConfigurationController::browseAction()
{
    CallMarker marker("TavConfigurationController::browseAction", this);
    QFileDialog panel(&m_window);
    panel.setFileMode(QFileDialog::ExistingFile);
    if (panel.exec() != QDialog::Accepted)
        return std::nullopt;
    return panel.selectedFiles().constFirst().toStdString();
}

// What is switched off is saved too: it stays for the day when it is switched on again.
void TavConfigurationController::save()
{
    CallMarker marker("TavConfigurationController::save", this);
    std::string address;
    m_IPAddressFormatter.getObjectValue(address, m_pOutlets->m_IPAddressTextField->value());
    m_pModel->saveToPersistence(
        m_pOutlets->radioButtonsWithVPN->isChecked(), m_pOutlets->m_startCommandLineField->value(),
        m_pOutlets->m_startArgsField->value(), m_pOutlets->m_stopCommandLineField->value(),
        m_pOutlets->m_stopArgsField->value(), m_pOutlets->radioButtonEnableMonitoring->isChecked(),
        address);
}

void TavConfigurationController::cancel()
{
    CallMarker marker("TavConfigurationController::cancel", this);
    m_pModel->cancelApplication();
}

// Input that is still waiting must not act any more: a second Save would replace the backup.
void TavConfigurationController::closeApplication()
{
    CallMarker marker("TavConfigurationController::closeApplication", this);
    m_window.setEnabled(false);
    QCoreApplication::exit();
}

void TavConfigurationController::fillStartCommandLine(
    const std::string& commandLine, const std::string& arguments)
{
    CallMarker marker("TavConfigurationController::fillStartCommandLine", this);
    m_pOutlets->m_startCommandLineField->setValue(commandLine);
    m_pOutlets->m_startArgsField->setValue(arguments);
}

void TavConfigurationController::fillSopCommandLine(
    const std::string& commandLine, const std::string& arguments)
{
    CallMarker marker("TavConfigurationController::fillSopCommandLine", this);
    m_pOutlets->m_stopCommandLineField->setValue(commandLine);
    m_pOutlets->m_stopArgsField->setValue(arguments);
}

void TavConfigurationController::fillMonitoringAddress(const std::string& address)
{
    CallMarker marker("TavConfigurationController::fillMonitoringAddress", this);
    m_pOutlets->m_IPAddressTextField->setValue(m_IPAddressFormatter.stringForObjectValue(address));
}
