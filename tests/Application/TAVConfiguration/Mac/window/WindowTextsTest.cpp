#include "ConfigurationWindow.h"

#include <QButtonGroup>
#include <QFontDatabase>
#include <QGroupBox>
#include <QKeySequence>

#include <ostream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

struct Outlet {
    const char* name;
    const char* key;

    friend void PrintTo(const Outlet& outlet, std::ostream* out) { *out << outlet.name; }
};

const std::vector<Outlet> outlets = {
    {"m_explanationText", "EXPLANATION_TEXT"},
    {"m_startCommandLineLabel", "STATIC_VPN_START_COMMAND_LINE"},
    {"m_startArgsLabel", "STATIC_VPN_START_ARGS"},
    {"m_stopCommandLineLabel", "STATIC_VPN_STOP_COMMAND_LINE"},
    {"m_stopArgsLabel", "STATIC_VPN_STOP_ARGS"},
    {"vpnBox", "GROUPBOX_VPN_LABEL"},
    {"vpnStartBox", "STATIC_VPN_START_LABEL"},
    {"vpnStopBox", "STATIC_VPN_STOP_LABEL"},
    {"cancelButton", "CANCEL_BUTTON"},
    {"saveButton", "SAVE_BUTTON"},
    {"browseStartButton", "BROWSE_BUTTON"},
    {"browseStopButton", "BROWSE_BUTTON"},
    {"radioButtonsWithoutVPN", "NO_VPN_RADIOBUTTON"},
    {"radioButtonsWithVPN", "WITH_VPN_RADIOBUTTON"},
    {"monitoringBox", "GROUPBOX_MONITORING_LABEL"},
    {"radioButtonDisableMonitoring", "MONITORING_DISABLE_RADIO_BUTTON"},
    {"radioButtonEnableMonitoring", "MONITORING_ENABLE_RADIO_BUTTON"},
    {"m_IPAddressLabel", "MONITORING_IP_ADDRESS"},
};

/// Each key's text is the key itself between the prefix and the suffix.
std::string localization(const std::string& prefix, const std::string& suffix)
{
    std::string content;
    for (const Outlet& outlet : outlets)
        content += outlet.key + ("=" + prefix) + outlet.key + suffix + "\n";
    return content;
}

/// What the screen shows of a text in which "&" marks a mnemonic.
QString withoutMnemonic(const QString& text)
{
    QString shown;
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text[i] == u'&' && i + 1 < text.size())
            ++i;
        shown += text[i];
    }
    return shown;
}

/// A box shows its title in a label of its own.
const QLabel& title(const QWidget& box)
{
    return *box.findChild<QLabel*>(box.objectName() + QStringLiteral("Title"));
}

std::string shownText(const QWidget& control)
{
    if (const auto* const button = qobject_cast<const QAbstractButton*>(&control))
        return withoutMnemonic(button->text()).toStdString();
    if (qobject_cast<const QGroupBox*>(&control) != nullptr)
        return shownText(title(control));
    const auto& label = dynamic_cast<const QLabel&>(control);
    return (label.buddy() != nullptr ? withoutMnemonic(label.text()) : label.text()).toStdString();
}

class WindowOutlet : public testing::TestWithParam<Outlet> {};

} // namespace

TEST_P(WindowOutlet, ShowsTheTextOfItsKeyToTheLetter)
{
    const ConfigurationWindow window("", localization("<b>&amp; R&D && \"", " %s</b>&"));

    EXPECT_EQ(
        shownText(window.outlet(GetParam().name)),
        "<b>&amp; R&D && \"" + std::string(GetParam().key) + " %s</b>&");
}

TEST_P(WindowOutlet, ShowsALineBreakOfItsText)
{
    const ConfigurationWindow window("", localization("1\\n", ""));

    EXPECT_EQ(shownText(window.outlet(GetParam().name)), "1\n" + std::string(GetParam().key));
}

TEST_P(WindowOutlet, ShowsItsSecondLine)
{
    const auto shown = [](const std::string& text) {
        const ConfigurationWindow window("", GetParam().key + ("=" + text) + "\n");
        return window.outlet(GetParam().name).grab().toImage();
    };

    EXPECT_EQ(shown("1\\n8"), shown("1\\n8"));
    EXPECT_NE(shown("1\\n8"), shown("1\\n3"));
}

TEST_P(WindowOutlet, ShowsItsKeyWhereTheTextIsMissing)
{
    const ConfigurationWindow window("", "");

    EXPECT_EQ(shownText(window.outlet(GetParam().name)), GetParam().key);
}

TEST_P(WindowOutlet, HasAnAccessibleName)
{
    const ConfigurationWindow window("", localization("R&D ", ""));

    EXPECT_TRUE(window.outlet(GetParam().name)
                    .accessibleName()
                    .endsWith(QStringLiteral("R&D ") + GetParam().key));
}

INSTANTIATE_TEST_SUITE_P(Table, WindowOutlet, testing::ValuesIn(outlets), [](const auto& test) {
    return std::string(test.param.name);
});

TEST(WindowTexts, AreLookedUpInTheOrderOfTheSetUp)
{
    const ConfigurationWindow window("", "");
    const std::vector<std::string> order = {
        "MONITORING_IP_ADDRESS",
        "EXPLANATION_TEXT",
        "GROUPBOX_VPN_LABEL",
        "STATIC_VPN_START_LABEL",
        "STATIC_VPN_STOP_LABEL",
        "STATIC_VPN_START_COMMAND_LINE",
        "STATIC_VPN_START_ARGS",
        "STATIC_VPN_STOP_COMMAND_LINE",
        "STATIC_VPN_STOP_ARGS",
        "BROWSE_BUTTON",
        "BROWSE_BUTTON",
        "SAVE_BUTTON",
        "CANCEL_BUTTON",
        "NO_VPN_RADIOBUTTON",
        "WITH_VPN_RADIOBUTTON",
        "GROUPBOX_MONITORING_LABEL",
        "MONITORING_DISABLE_RADIO_BUTTON",
        "MONITORING_ENABLE_RADIO_BUTTON",
    };

    ASSERT_EQ(window.alertPresenter.alerts.size(), order.size());
    for (std::size_t i = 0; i < order.size(); ++i)
        EXPECT_EQ(
            window.alertPresenter.alerts[i].text.find("The key '" + order[i] + "' is absent"), 0U);
}

TEST(WindowTexts, LabelsTakeNoMarkup)
{
    const ConfigurationWindow window("", localization("<b>", "</b>"));

    for (const QLabel* const label : window.window.findChildren<QLabel*>())
        EXPECT_EQ(label->textFormat(), Qt::PlainText) << label->objectName().toStdString();
}

TEST(WindowTexts, WindowHasTheToolsNameAsItsTitle)
{
    const ConfigurationWindow window("", localization("", ""));

    EXPECT_EQ(window.window.windowTitle(), "TavConfiguration");
}

TEST(WindowTexts, BoxTitlesAreInTheSystemFontOfSizeTwelve)
{
    const ConfigurationWindow window("", localization("", ""));
    const QFont systemFont = QFontDatabase::systemFont(QFontDatabase::GeneralFont);

    for (const char* const name : {"vpnBox", "vpnStartBox", "vpnStopBox", "monitoringBox"}) {
        const QFont font = title(window.outlet(name)).font();
        EXPECT_EQ(font.pointSize(), 12) << name;
        EXPECT_EQ(font.family(), systemFont.family()) << name;
    }
}

TEST(WindowTexts, BoxTitlesHandTheirFontToNoContent)
{
    const ConfigurationWindow window("", localization("", ""));

    for (const char* const name :
         {"radioButtonsWithVPN", "m_startArgsLabel", "m_stopArgsField", "browseStopButton",
          "radioButtonEnableMonitoring", "m_IPAddressLabel", "m_IPAddressTextField"})
        EXPECT_EQ(
            window.outlet(name).font().pointSize(),
            QApplication::font(&window.outlet(name)).pointSize())
            << name;
}

TEST(WindowTexts, AccessibleNamesTellStartAndStopApart)
{
    const ConfigurationWindow window(
        "", "STATIC_VPN_START_LABEL=Start & go\nSTATIC_VPN_STOP_LABEL=Stop\n"
            "STATIC_VPN_START_COMMAND_LINE=Command:\nSTATIC_VPN_STOP_COMMAND_LINE=Command:\n"
            "STATIC_VPN_START_ARGS=Arguments:\nSTATIC_VPN_STOP_ARGS=Arguments:\n"
            "BROWSE_BUTTON=Browse\nMONITORING_IP_ADDRESS=IP & port:\n");
    const auto name = [&](const char* outlet) {
        return window.outlet(outlet).accessibleName().toStdString();
    };

    EXPECT_EQ(name("m_startCommandLineField"), "Start & go: Command:");
    EXPECT_EQ(name("m_startArgsField"), "Start & go: Arguments:");
    EXPECT_EQ(name("browseStartButton"), "Start & go: Browse");
    EXPECT_EQ(name("m_stopCommandLineField"), "Stop: Command:");
    EXPECT_EQ(name("m_stopArgsField"), "Stop: Arguments:");
    EXPECT_EQ(name("browseStopButton"), "Stop: Browse");
    EXPECT_EQ(name("m_IPAddressTextField"), "IP & port:");
}

TEST(WindowTexts, SaveAndCancelTakeTheirLettersBeforeTheOthersInReadingOrder)
{
    const ConfigurationWindow window(
        "", "SAVE_BUTTON=abcdefghijklm\nCANCEL_BUTTON=abcdefghijklm\n"
            "NO_VPN_RADIOBUTTON=abcdefghijklm\nWITH_VPN_RADIOBUTTON=abcdefghijklm\n"
            "STATIC_VPN_START_COMMAND_LINE=abcdefghijklm\nBROWSE_BUTTON=abcdefghijklm\n"
            "STATIC_VPN_START_ARGS=abcdefghijklm\nSTATIC_VPN_STOP_COMMAND_LINE=abcdefghijklm\n"
            "STATIC_VPN_STOP_ARGS=abcdefghijklm\nMONITORING_DISABLE_RADIO_BUTTON=abcdefghijklm\n"
            "MONITORING_ENABLE_RADIO_BUTTON=abcdefghijklm\nMONITORING_IP_ADDRESS=abcdefghijklm\n");

    char letter = 'A';
    for (const char* const name :
         {"saveButton", "cancelButton", "radioButtonsWithoutVPN", "radioButtonsWithVPN",
          "m_startCommandLineLabel", "browseStartButton", "m_startArgsLabel",
          "m_stopCommandLineLabel", "browseStopButton", "m_stopArgsLabel",
          "radioButtonDisableMonitoring", "radioButtonEnableMonitoring", "m_IPAddressLabel"})
        EXPECT_EQ(
            QKeySequence::mnemonic(window.outlet(name).property("text").toString()).toString(),
            QStringLiteral("Alt+") + QChar::fromLatin1(letter++))
            << name;
}

TEST(WindowTexts, LabelsAreTiedToTheirFields)
{
    const ConfigurationWindow window("", localization("", ""));
    const auto buddy = [&](const char* label) {
        return window.outlet<QLabel>(label).buddy()->objectName().toStdString();
    };

    EXPECT_EQ(buddy("m_startCommandLineLabel"), "m_startCommandLineField");
    EXPECT_EQ(buddy("m_startArgsLabel"), "m_startArgsField");
    EXPECT_EQ(buddy("m_stopCommandLineLabel"), "m_stopCommandLineField");
    EXPECT_EQ(buddy("m_stopArgsLabel"), "m_stopArgsField");
    EXPECT_EQ(buddy("m_IPAddressLabel"), "m_IPAddressTextField");
}

TEST(WindowTexts, RadioGroupsHoldTheirCells)
{
    const ConfigurationWindow window("", localization("", ""));
    const auto group = [&](const char* cell) {
        return window.outlet<QRadioButton>(cell).group()->objectName().toStdString();
    };

    EXPECT_EQ(group("radioButtonsWithoutVPN"), "radioButtons");
    EXPECT_EQ(group("radioButtonsWithVPN"), "radioButtons");
    EXPECT_EQ(group("radioButtonDisableMonitoring"), "monitoringRadioButtons");
    EXPECT_EQ(group("radioButtonEnableMonitoring"), "monitoringRadioButtons");
}
