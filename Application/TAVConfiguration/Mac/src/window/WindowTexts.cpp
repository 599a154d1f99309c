#include "WindowTexts.h"

#include "CallMarker.h"
#include "Localizer.h"
#include "MnemonicAssigner.h"
#include "ui_TavConfigurationWindow.h"

namespace {

QString localized(const QString& key)
{
    CallMarker marker("localized");
    return QString::fromStdString(
        Localizer::getInstance()->getLocalizedString(key.toStdString().c_str()));
}

template<typename Control>
void showText(Control* control)
{
    CallMarker marker("showText");
    const QString text = localized(control->text());
    control->setText(text);
    control->setAccessibleName(text);
}

void showTitle(QLabel* title, QGroupBox* box)
{
    CallMarker marker("showTitle");
    showText(title);
    box->setAccessibleName(title->text());
}

/// Start and stop commands have the same labels: their accessible names say which box they are in.
void nameWithin(const QGroupBox* box, QWidget* control, const QString& label)
{
    CallMarker marker("nameWithin");
    control->setAccessibleName(box->accessibleName() + QStringLiteral(": ") + label);
}

void nameFields(Ui::TavConfigurationWindow& window)
{
    CallMarker marker("nameFields");
    const auto nameCommand = [](const QGroupBox* box, const QLabel* commandLineLabel,
                                QWidget* commandLineField, QPushButton* browseButton,
                                const QLabel* argsLabel, QWidget* argsField) {
        nameWithin(box, commandLineField, commandLineLabel->text());
        nameWithin(box, browseButton, browseButton->text());
        nameWithin(box, argsField, argsLabel->text());
    };
    nameCommand(
        window.vpnStartBox, window.m_startCommandLineLabel, window.m_startCommandLineField,
        window.browseStartButton, window.m_startArgsLabel, window.m_startArgsField);
    nameCommand(
        window.vpnStopBox, window.m_stopCommandLineLabel, window.m_stopCommandLineField,
        window.browseStopButton, window.m_stopArgsLabel, window.m_stopArgsField);
    window.m_IPAddressTextField->setAccessibleName(window.m_IPAddressLabel->text());
}

/// The buttons that end the window get their letters first, so that these are the same every time.
void assignMnemonics(Ui::TavConfigurationWindow& window)
{
    CallMarker marker("assignMnemonics");
    MnemonicAssigner mnemonics;
    const auto assign = [&](auto* control) { control->setText(mnemonics.assign(control->text())); };
    assign(window.saveButton);
    assign(window.cancelButton);
    assign(window.radioButtonsWithoutVPN);
    assign(window.radioButtonsWithVPN);
    assign(window.m_startCommandLineLabel);
    assign(window.browseStartButton);
    assign(window.m_startArgsLabel);
    assign(window.m_stopCommandLineLabel);
    assign(window.browseStopButton);
    assign(window.m_stopArgsLabel);
    assign(window.radioButtonDisableMonitoring);
    assign(window.radioButtonEnableMonitoring);
    assign(window.m_IPAddressLabel);
}

} // namespace

void WindowTexts::show(Ui::TavConfigurationWindow& window)
{
    CallMarker marker("WindowTexts::show");
    showText(window.m_IPAddressLabel);
    showText(window.m_explanationText);
    showTitle(window.vpnBoxTitle, window.vpnBox);
    showTitle(window.vpnStartBoxTitle, window.vpnStartBox);
    showTitle(window.vpnStopBoxTitle, window.vpnStopBox);
    showText(window.m_startCommandLineLabel);
    showText(window.m_startArgsLabel);
    showText(window.m_stopCommandLineLabel);
    showText(window.m_stopArgsLabel);
    showText(window.browseStartButton);
    showText(window.browseStopButton);
    showText(window.saveButton);
    showText(window.cancelButton);
    showText(window.radioButtonsWithoutVPN);
    showText(window.radioButtonsWithVPN);
    showTitle(window.monitoringBoxTitle, window.monitoringBox);
    showText(window.radioButtonDisableMonitoring);
    showText(window.radioButtonEnableMonitoring);

    nameFields(window);
    assignMnemonics(window);
}
