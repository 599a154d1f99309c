#include "ConfigurationWindow.h"
#include "NetworkText.h"

#include <algorithm>
#include <cmath>

#include <gtest/gtest.h>

namespace {

constexpr const char* vpnControls[] = {"m_startCommandLineField", "m_startArgsField",
                                       "m_stopCommandLineField",  "m_stopArgsField",
                                       "browseStartButton",       "browseStopButton"};
constexpr const char* vpnLabels[] = {
    "m_startCommandLineLabel", "m_startArgsLabel", "m_stopCommandLineLabel", "m_stopArgsLabel"};

const NetworkText off{
    .startCommandLine = "/bin/up",
    .startArguments = "-u",
    .stopCommandLine = "/bin/down",
    .stopArguments = "-d",
    .address = "10.0.0.1"};
const NetworkText on{
    .vpnActivated = "true",
    .startCommandLine = "/bin/up",
    .stopCommandLine = "/bin/down",
    .monitoringActivated = "true",
    .address = "10.0.0.1"};

/// How light a colour is, from 0 to 1, as the accessibility guidelines for web content count it.
double luminance(const QColor& colour)
{
    const auto linear = [](double part) {
        return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) +
           0.0722 * linear(colour.blueF());
}

/// The contrast of a text of that colour, which may be translucent, from 1 to 21.
double contrastOn(const QColor& ground, const QColor& text)
{
    const auto mixed = [alpha = text.alphaF()](float below, float above) {
        return below + alpha * (above - below);
    };
    const double shown = luminance(QColor::fromRgbF(
        mixed(ground.redF(), text.redF()), mixed(ground.greenF(), text.greenF()),
        mixed(ground.blueF(), text.blueF())));
    const auto [darker, lighter] = std::minmax({luminance(ground), shown});
    return (lighter + 0.05) / (darker + 0.05);
}

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

TEST(WindowChoices, EachGroupStartsAsItsOwnSectionSays)
{
    const ConfigurationWindow vpnAlone(NetworkText{.vpnActivated = "true"}.bytes(), "");
    const ConfigurationWindow monitoringAlone(
        NetworkText{.monitoringActivated = "true"}.bytes(), "");

    expectVpn(vpnAlone, true);
    expectMonitoring(vpnAlone, false);
    expectVpn(monitoringAlone, false);
    expectMonitoring(monitoringAlone, true);
}

TEST(WindowChoices, GrayIsReadableAndFarFromBlack)
{
    const ConfigurationWindow window(off.bytes(), "");
    const QPalette palette = window.window.palette();

    for (const char* const name : vpnLabels) {
        const QColor gray = window.outlet(name).palette().color(QPalette::WindowText);
        const double contrast = contrastOn(palette.color(QPalette::Window), gray);

        EXPECT_GE(contrast, 4.5) << name;
        EXPECT_LT(
            contrast,
            contrastOn(palette.color(QPalette::Window), palette.color(QPalette::WindowText)) / 3)
            << name;
    }
}

TEST(WindowChoices, TabStopsAtTheChosenCellAlone)
{
    const ConfigurationWindow window(off.bytes(), "");
    const auto stops = [&](const char* cell) {
        return window.outlet(cell).focusPolicy() == Qt::StrongFocus;
    };
    EXPECT_TRUE(stops("radioButtonsWithoutVPN"));
    EXPECT_FALSE(stops("radioButtonsWithVPN"));
    EXPECT_TRUE(stops("radioButtonDisableMonitoring"));
    EXPECT_FALSE(stops("radioButtonEnableMonitoring"));

    window.click("radioButtonsWithVPN");
    window.click("radioButtonEnableMonitoring");

    EXPECT_FALSE(stops("radioButtonsWithoutVPN"));
    EXPECT_TRUE(stops("radioButtonsWithVPN"));
    EXPECT_FALSE(stops("radioButtonDisableMonitoring"));
    EXPECT_TRUE(stops("radioButtonEnableMonitoring"));
    EXPECT_EQ(window.outlet("radioButtonsWithoutVPN").focusPolicy(), Qt::ClickFocus);
    EXPECT_EQ(window.outlet("radioButtonDisableMonitoring").focusPolicy(), Qt::ClickFocus);
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
