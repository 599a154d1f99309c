#include "ConfigurationWindow.h"
#include "Later.h"
#include "NetworkText.h"

#include <QFileDialog>

#include <functional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

using Alerts = std::vector<RecordingAlertPresenter::Alert>;

namespace {

const std::string texts = "MSGOK_DLG_TITLE=Title\n"
                          "MSGOK_DLG_FILL_BOTH_COMMAND_LINE=Both commands\n"
                          "MSGOK_DLG_FILL_CORRECT_IP_ADDRESS=An address\n"
                          "EXPLANATION_TEXT=\nSTATIC_VPN_START_COMMAND_LINE=\n"
                          "STATIC_VPN_START_ARGS=\nSTATIC_VPN_STOP_COMMAND_LINE=\n"
                          "STATIC_VPN_STOP_ARGS=\nGROUPBOX_VPN_LABEL=\nSTATIC_VPN_START_LABEL=\n"
                          "STATIC_VPN_STOP_LABEL=\nCANCEL_BUTTON=\nSAVE_BUTTON=\nBROWSE_BUTTON=\n"
                          "NO_VPN_RADIOBUTTON=\nWITH_VPN_RADIOBUTTON=\n"
                          "GROUPBOX_MONITORING_LABEL=\nMONITORING_DISABLE_RADIO_BUTTON=\n"
                          "MONITORING_ENABLE_RADIO_BUTTON=\nMONITORING_IP_ADDRESS=\n";

const NetworkText on{
    .vpnActivated = "true",
    .startCommandLine = "/bin/up",
    .startArguments = "-u",
    .stopCommandLine = "/bin/down",
    .stopArguments = "-d",
    .monitoringActivated = "true",
    .address = "10.0.0.1"};

const NetworkText edited{
    .vpnActivated = "true",
    .startCommandLine = "/opt/new up",
    .startArguments = "<b> & \"a\"",
    .stopCommandLine = "/opt/new down",
    .stopArguments = "",
    .monitoringActivated = "true",
    .address = "1.2.3.4"};

class WindowActionsTest : public testing::Test {
protected:
    /// Runs the application loop from the user's action until the application ends itself.
    static int runUntilClosed(const std::function<void()>& action)
    {
        later(action);
        return QApplication::exec();
    }

    /// What the five fields hold.
    std::vector<std::string> entries() const
    {
        std::vector<std::string> values;
        for (const char* const field :
             {"m_startCommandLineField", "m_startArgsField", "m_stopCommandLineField",
              "m_stopArgsField", "m_IPAddressTextField"})
            values.push_back(m_window.value(field));
        return values;
    }

    ConfigurationWindow m_window{on.bytes(), texts};
};

/// Lets the user act on the file chooser once it is open.
void atFileChooser(const std::function<void(QFileDialog&)>& act)
{
    later([act] { act(dynamic_cast<QFileDialog&>(*QApplication::activeModalWidget())); });
}

void choose(QFileDialog& panel, const std::string& file)
{
    panel.selectFile(QString::fromStdString(file));
    QMetaObject::invokeMethod(&panel, "accept");
}

} // namespace

TEST_F(WindowActionsTest, SaveWritesWhatTheWindowHoldsAndEndsTheApplication)
{
    m_window.type("m_startCommandLineField", "/opt/new up");
    m_window.type("m_startArgsField", "<b> & \"a\"");
    m_window.type("m_stopCommandLineField", "/opt/new down");
    m_window.outlet<ValueField>("m_stopArgsField").clear();
    m_window.type("m_IPAddressTextField", "1.2.3.4");

    EXPECT_EQ(runUntilClosed([&] { m_window.click("saveButton"); }), 0);

    EXPECT_EQ(m_window.file.read(), edited.bytes());
}

TEST_F(WindowActionsTest, EachGroupIsSavedAsItsOwnCellsSay)
{
    for (const bool vpn : {false, true}) {
        NetworkText expected = on;
        expected.vpnActivated = vpn ? "true" : "false";
        expected.monitoringActivated = vpn ? "false" : "true";
        const ConfigurationWindow window(on.bytes(), texts);
        window.click(vpn ? "radioButtonDisableMonitoring" : "radioButtonsWithoutVPN");

        runUntilClosed([&] { window.click("saveButton"); });

        EXPECT_EQ(window.file.read(), expected.bytes());
    }
}

TEST_F(WindowActionsTest, LettersAndBlanksAreRefusedByTheAddressFieldAlone)
{
    for (const char* const field :
         {"m_startCommandLineField", "m_startArgsField", "m_stopCommandLineField",
          "m_stopArgsField", "m_IPAddressTextField"}) {
        m_window.outlet<ValueField>(field).clear();
        m_window.type(field, "a 1");
    }

    EXPECT_EQ(entries(), (std::vector<std::string>{"a 1", "a 1", "a 1", "a 1", "1"}));
}

TEST_F(WindowActionsTest, EnterInAFieldSaves)
{
    m_window.type("m_IPAddressTextField", "9.9");

    EXPECT_EQ(
        runUntilClosed(
            [&] { QTest::keyClick(&m_window.outlet("m_IPAddressTextField"), Qt::Key_Return); }),
        0);

    NetworkText expected = on;
    expected.address = "9.9";
    EXPECT_EQ(m_window.file.read(), expected.bytes());
}

TEST_F(WindowActionsTest, SaveIsTheDefaultButton)
{
    EXPECT_TRUE(m_window.outlet<QPushButton>("saveButton").isDefault());
}

TEST_F(WindowActionsTest, SwitchedOffFieldsAreSavedToo)
{
    m_window.type("m_startCommandLineField", "/typed/before");
    m_window.type("m_IPAddressTextField", "7.7");
    m_window.click("radioButtonsWithoutVPN");
    m_window.click("radioButtonDisableMonitoring");

    EXPECT_EQ(runUntilClosed([&] { m_window.click("saveButton"); }), 0);

    NetworkText expected = on;
    expected.vpnActivated = "false";
    expected.startCommandLine = "/typed/before";
    expected.monitoringActivated = "false";
    expected.address = "7.7";
    EXPECT_EQ(m_window.file.read(), expected.bytes());
}

TEST_F(WindowActionsTest, SaveWithoutAnyTextIsFineWhenBothAreSwitchedOff)
{
    for (const char* const field :
         {"m_startCommandLineField", "m_startArgsField", "m_stopCommandLineField",
          "m_stopArgsField", "m_IPAddressTextField"})
        m_window.outlet<ValueField>(field).clear();
    m_window.click("radioButtonsWithoutVPN");
    m_window.click("radioButtonDisableMonitoring");

    EXPECT_EQ(runUntilClosed([&] { m_window.click("saveButton"); }), 0);

    EXPECT_EQ(m_window.file.read(), NetworkText().bytes());
}

TEST_F(WindowActionsTest, VpnWithoutACommandIsToldAndNothingIsWritten)
{
    m_window.outlet<ValueField>("m_stopCommandLineField").clear();

    m_window.click("saveButton");

    EXPECT_EQ(
        m_window.alertPresenter.alerts,
        (Alerts{{AlertPresenter::Level::note, "Title", "Both commands"}}));
    EXPECT_EQ(m_window.file.read(), on.bytes());
    EXPECT_TRUE(m_window.window.isEnabled());
    EXPECT_EQ(m_window.value("m_startCommandLineField"), "/bin/up");
}

TEST_F(WindowActionsTest, MonitoringWithoutAnAddressIsToldAndNothingIsWritten)
{
    m_window.outlet<ValueField>("m_IPAddressTextField").clear();

    m_window.click("saveButton");

    EXPECT_EQ(
        m_window.alertPresenter.alerts,
        (Alerts{{AlertPresenter::Level::note, "Title", "An address"}}));
    EXPECT_EQ(m_window.file.read(), on.bytes());
    EXPECT_TRUE(m_window.window.isEnabled());
}

TEST_F(WindowActionsTest, EveryEntryStaysAfterEachAlert)
{
    for (const char* const missing :
         {"m_startCommandLineField", "m_stopCommandLineField", "m_IPAddressTextField"}) {
        m_window.controller.fillStartCommandLine("/typed up", "typed -u");
        m_window.controller.fillSopCommandLine("/typed down", "typed -d");
        m_window.controller.fillMonitoringAddress("9.9.9.9");
        m_window.outlet<ValueField>(missing).clear();
        const std::vector<std::string> before = entries();

        m_window.click("saveButton");

        EXPECT_EQ(entries(), before) << missing;
        EXPECT_TRUE(m_window.outlet<QRadioButton>("radioButtonsWithVPN").isChecked());
        EXPECT_TRUE(m_window.outlet<QRadioButton>("radioButtonEnableMonitoring").isChecked());
    }
    EXPECT_EQ(m_window.alertPresenter.alerts.size(), 3U);
}

TEST_F(WindowActionsTest, VpnIsToldFirstAndAlone)
{
    m_window.outlet<ValueField>("m_startCommandLineField").clear();
    m_window.outlet<ValueField>("m_IPAddressTextField").clear();

    m_window.click("saveButton");

    EXPECT_EQ(
        m_window.alertPresenter.alerts,
        (Alerts{{AlertPresenter::Level::note, "Title", "Both commands"}}));
}

TEST_F(WindowActionsTest, SaveGoesThroughAfterTheEntriesAreCompleted)
{
    m_window.outlet<ValueField>("m_IPAddressTextField").clear();
    m_window.click("saveButton");
    m_window.type("m_IPAddressTextField", "5.5");

    EXPECT_EQ(runUntilClosed([&] { m_window.click("saveButton"); }), 0);

    NetworkText expected = on;
    expected.address = "5.5";
    EXPECT_EQ(m_window.file.read(), expected.bytes());
}

TEST_F(WindowActionsTest, CancelEndsTheApplicationAndWritesNothing)
{
    m_window.type("m_IPAddressTextField", "9.9");

    EXPECT_EQ(runUntilClosed([&] { m_window.click("cancelButton"); }), 0);

    EXPECT_EQ(m_window.file.read(), on.bytes());
}

TEST_F(WindowActionsTest, EscapeCancels)
{
    m_window.type("m_IPAddressTextField", "9.9");

    EXPECT_EQ(
        runUntilClosed(
            [&] { QTest::keyClick(&m_window.outlet("m_IPAddressTextField"), Qt::Key_Escape); }),
        0);

    EXPECT_EQ(m_window.file.read(), on.bytes());
}

TEST_F(WindowActionsTest, ClosingTheWindowCancels)
{
    m_window.type("m_IPAddressTextField", "9.9");

    EXPECT_EQ(runUntilClosed([&] { m_window.window.close(); }), 0);

    EXPECT_EQ(m_window.file.read(), on.bytes());
}

TEST_F(WindowActionsTest, NothingActsOnceTheApplicationIsEnding)
{
    runUntilClosed([&] {
        m_window.click("saveButton");
        m_window.file.write("written by somebody else since");
        QTest::mouseClick(&m_window.outlet("saveButton"), Qt::LeftButton);
    });

    EXPECT_EQ(m_window.file.read(), "written by somebody else since");
}

TEST_F(WindowActionsTest, UntouchedValuesAreSavedByteForByte)
{
    NetworkText odd = on;
    odd.startArguments = "caf\xE9 \x01";
    odd.address = "host.example";
    ConfigurationWindow window(odd.bytes(), texts);

    EXPECT_EQ(runUntilClosed([&] { window.click("saveButton"); }), 0);

    EXPECT_EQ(window.file.read(), odd.bytes());
}

TEST_F(WindowActionsTest, ChosenFileBecomesTheCommandLineOfItsOwnBox)
{
    const TemporaryFolder folder;
    const std::string start = folder.write("start & go", "");
    const std::string stop = folder.write("stop", "");

    atFileChooser([&](QFileDialog& panel) { choose(panel, start); });
    m_window.click("browseStartButton");
    EXPECT_EQ(m_window.value("m_startCommandLineField"), start);
    EXPECT_EQ(m_window.value("m_stopCommandLineField"), "/bin/down");

    atFileChooser([&](QFileDialog& panel) { choose(panel, stop); });
    m_window.click("browseStopButton");
    EXPECT_EQ(m_window.value("m_startCommandLineField"), start);
    EXPECT_EQ(m_window.value("m_stopCommandLineField"), stop);
}

TEST_F(WindowActionsTest, CancelledFileChooserLeavesTheFieldAsItIs)
{
    atFileChooser([](QFileDialog& panel) { panel.reject(); });
    m_window.click("browseStartButton");

    atFileChooser([](QFileDialog& panel) { panel.reject(); });
    m_window.click("browseStopButton");

    EXPECT_EQ(m_window.value("m_startCommandLineField"), "/bin/up");
    EXPECT_EQ(m_window.value("m_stopCommandLineField"), "/bin/down");
}

TEST_F(WindowActionsTest, LineBreakOfAChosenFileNameIsABlankInTheField)
{
    const TemporaryFolder folder;
    const std::string file = folder.write("line\nbreak", "");
    atFileChooser([&](QFileDialog& panel) { choose(panel, file); });

    m_window.click("browseStartButton");

    EXPECT_EQ(m_window.value("m_startCommandLineField"), folder.file("line break"));
}

TEST_F(WindowActionsTest, FileNameThatIsNotUtf8IsRefusedByTheFileChooser)
{
    const TemporaryFolder folder;
    const std::string file = folder.write("caf\xE9", "");
    bool isRefused = false;
    atFileChooser([&](QFileDialog& panel) {
        later([&] {
            QWidget* const refusal = QApplication::activeModalWidget();
            isRefused = refusal != nullptr && refusal != &panel;
            if (isRefused)
                refusal->close();
        });
        choose(panel, file);
        panel.reject();
    });

    m_window.click("browseStartButton");

    EXPECT_TRUE(isRefused);
    EXPECT_EQ(m_window.value("m_startCommandLineField"), "/bin/up");
}

TEST_F(WindowActionsTest, FileChooserOffersOneExistingFile)
{
    QFileDialog::FileMode mode = QFileDialog::AnyFile;
    QFileDialog::AcceptMode acceptMode = QFileDialog::AcceptSave;
    atFileChooser([&](QFileDialog& panel) {
        mode = panel.fileMode();
        acceptMode = panel.acceptMode();
        panel.reject();
    });

    m_window.click("browseStartButton");

    EXPECT_EQ(mode, QFileDialog::ExistingFile);
    EXPECT_EQ(acceptMode, QFileDialog::AcceptOpen);
}

TEST_F(WindowActionsTest, FileChooserStandsOverTheWindow)
{
    const QWidget* parent = nullptr;
    atFileChooser([&](QFileDialog& panel) {
        parent = panel.parentWidget();
        panel.reject();
    });

    m_window.click("browseStartButton");

    EXPECT_EQ(parent, &m_window.window);
}

TEST_F(WindowActionsTest, BrowseMessageAnswersWithThePath)
{
    const TemporaryFolder folder;
    const std::string file = folder.write("tool", "");
    atFileChooser([&](QFileDialog& panel) { choose(panel, file); });

    EXPECT_EQ(m_window.controller.browseAction(), file);
}

TEST_F(WindowActionsTest, FillMessagesReachTheirFields)
{
    m_window.controller.fillStartCommandLine("start", "start args");
    m_window.controller.fillSopCommandLine("stop", "stop args");
    m_window.controller.fillMonitoringAddress("4.3.2.1");

    EXPECT_EQ(m_window.value("m_startCommandLineField"), "start");
    EXPECT_EQ(m_window.value("m_startArgsField"), "start args");
    EXPECT_EQ(m_window.value("m_stopCommandLineField"), "stop");
    EXPECT_EQ(m_window.value("m_stopArgsField"), "stop args");
    EXPECT_EQ(m_window.value("m_IPAddressTextField"), "4.3.2.1");
}
