#include "ConfigurationWindow.h"
#include "NetworkFile.h"

#include <gtest/gtest.h>

namespace {

constexpr const char* vpnControls[] = {"m_startCommandLineField", "m_startArgsField",
                                       "m_stopCommandLineField",  "m_stopArgsField",
                                       "browseStartButton",       "browseStopButton"};
constexpr const char* vpnLabels[] = {
    "m_startCommandLineLabel", "m_startArgsLabel", "m_stopCommandLineLabel", "m_stopArgsLabel"};

const NetworkFile off{
    .startCommandLine = "/bin/up",
    .startArguments = "-u",
    .stopCommandLine = "/bin/down",
    .stopArguments = "-d",
    .address = "10.0.0.1"};
const NetworkFile on{
    .vpnActivated = "true",
    .startCommandLine = "/bin/up",
    .stopCommandLine = "/bin/down",
    .monitoringActivated = "true",
    .address = "10.0.0.1"};

void expectVpn(const ConfigurationWindow& window, bool enabled)
{
    EXPECT_EQ(window.outlet<QRadioButton>("radioButtonsWithVPN").isChecked(), enabled);
    EXPECT_EQ(window.outlet<QRadioButton>("radioButtonsWithoutVPN").isChecked(), !enabled);
    for (const char* const name : vpnControls)
        EXPECT_EQ(window.outlet(name).isEnabled(), enabled) << name;

    const QColor black = window.window.palette().color(QPalette::WindowText);
    for (const char* const name : vpnLabels) {
        const QColor colour = window.outlet(name).palette().color(QPalette::WindowText);
        EXPECT_EQ(colour.rgb(), black.rgb()) << name;
        EXPECT_EQ(colour.alpha() == 255, enabled) << name;
        EXPECT_TRUE(window.outlet(name).isEnabled()) << name;
    }
}

void expectMonitoring(const ConfigurationWindow& window, bool enabled)
{
    EXPECT_EQ(window.outlet<QRadioButton>("radioButtonEnableMonitoring").isChecked(), enabled);
    EXPECT_EQ(window.outlet<QRadioButton>("radioButtonDisableMonitoring").isChecked(), !enabled);
    EXPECT_EQ(window.outlet("m_IPAddressTextField").isEnabled(), enabled);

    const QWidget& label = window.outlet("m_IPAddressLabel");
    EXPECT_TRUE(label.isEnabled());
    EXPECT_EQ(
        label.palette().color(QPalette::WindowText),
        window.window.palette().color(QPalette::WindowText));
}

} // namespace

TEST(WindowChoices, StartSwitchedOffWithoutAFile)
{
    const ConfigurationWindow window("", "");

    expectVpn(window, false);
    expectMonitoring(window, false);
}

TEST(WindowChoices, SwitchedOffGroupsAreGrayButFilled)
{
    const ConfigurationWindow window(off.bytes(), "");

    expectVpn(window, false);
    expectMonitoring(window, false);
    EXPECT_EQ(window.value("m_startCommandLineField"), "/bin/up");
    EXPECT_EQ(window.value("m_startArgsField"), "-u");
    EXPECT_EQ(window.value("m_stopCommandLineField"), "/bin/down");
    EXPECT_EQ(window.value("m_stopArgsField"), "-d");
    EXPECT_EQ(window.value("m_IPAddressTextField"), "10.0.0.1");
}

TEST(WindowChoices, StartSwitchedOnAsTheFileSays)
{
    const ConfigurationWindow window(on.bytes(), "");

    expectVpn(window, true);
    expectMonitoring(window, true);
}

TEST(WindowChoices, VpnIsSwitchedOnAndOffByItsCellsAlone)
{
    const ConfigurationWindow window(off.bytes(), "");

    window.click("radioButtonsWithVPN");
    expectVpn(window, true);
    expectMonitoring(window, false);

    window.click("radioButtonsWithoutVPN");
    expectVpn(window, false);
    expectMonitoring(window, false);
}

TEST(WindowChoices, MonitoringIsSwitchedOnAndOffByItsCellsAlone)
{
    const ConfigurationWindow window(off.bytes(), "");

    window.click("radioButtonEnableMonitoring");
    expectMonitoring(window, true);
    expectVpn(window, false);

    window.click("radioButtonDisableMonitoring");
    expectMonitoring(window, false);
    expectVpn(window, false);
}

TEST(WindowChoices, SwitchingOffKeepsTheTexts)
{
    const ConfigurationWindow window(on.bytes(), "");

    window.click("radioButtonsWithoutVPN");
    window.click("radioButtonDisableMonitoring");

    EXPECT_EQ(window.value("m_startCommandLineField"), "/bin/up");
    EXPECT_EQ(window.value("m_IPAddressTextField"), "10.0.0.1");
}

TEST(WindowChoices, ClickingTheChosenCellAgainChangesNothing)
{
    const ConfigurationWindow window(on.bytes(), "");

    window.click("radioButtonsWithVPN");
    window.click("radioButtonEnableMonitoring");

    expectVpn(window, true);
    expectMonitoring(window, true);
}

TEST(WindowChoices, ArrowKeysMoveTheChoice)
{
    ConfigurationWindow window(off.bytes(), "");

    ASSERT_TRUE(QTest::qWaitForWindowActive(&window.window));
    window.outlet("radioButtonsWithoutVPN").setFocus();

    QTest::keyClick(&window.outlet("radioButtonsWithoutVPN"), Qt::Key_Down);

    expectVpn(window, true);
}

TEST(WindowChoices, AssistiveTechnologyMovesTheChoiceWithoutAClick)
{
    const ConfigurationWindow window(off.bytes(), "");

    window.outlet<QRadioButton>("radioButtonsWithVPN").toggle();
    window.outlet<QRadioButton>("radioButtonEnableMonitoring").toggle();

    expectVpn(window, true);
    expectMonitoring(window, true);
}

TEST(WindowChoices, GrayFollowsAThemeThatChangesMeanwhile)
{
    const ConfigurationWindow window(off.bytes(), "");
    const QPalette light = QApplication::palette();
    QPalette dark = light;
    dark.setColor(QPalette::WindowText, Qt::white);

    QApplication::setPalette(dark);
    QApplication::processEvents();
    const QColor gray = window.outlet("m_startArgsLabel").palette().color(QPalette::WindowText);
    QApplication::setPalette(light);
    QApplication::processEvents();

    EXPECT_EQ(gray.rgb(), QColor(Qt::white).rgb());
    EXPECT_LT(gray.alpha(), 255);
}
