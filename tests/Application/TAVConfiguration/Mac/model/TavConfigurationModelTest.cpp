#include "TavConfigurationModel.h"

#include "ConfigurationPlace.h"
#include "LocalizedTexts.h"
#include "RecordingController.h"

#include <optional>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>
#include <sys/stat.h>

using Alerts = std::vector<RecordingAlertPresenter::Alert>;
using Messages = std::vector<std::string>;

namespace {

constexpr const char* header = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                               "<plist version=\"1.0\">\n";

/// Two networks, the first with every section that the tool does not edit.
const std::string twoNetworks = header + std::string(R"(<dict>
	<key>Company1</key>
	<dict>
		<key>DedicatedAPN</key>
		<dict>
			<key>APN</key>
			<string>apn.example</string>
		</dict>
		<key>Monitoring</key>
		<dict>
			<key>Activated</key>
			<string>true</string>
			<key>Address</key>
			<string>10.0.0.1</string>
			<key>Type</key>
			<string>DNS</string>
		</dict>
		<key>Name</key>
		<string>Head office</string>
		<key>PublicVPN</key>
		<dict>
			<key>Activated</key>
			<string>true</string>
			<key>StartArguments</key>
			<string>start args</string>
			<key>StartCommandLine</key>
			<string>/bin/start</string>
			<key>StopArguments</key>
			<string>stop args</string>
			<key>StopCommandLine</key>
			<string>/bin/stop</string>
		</dict>
	</dict>
	<key>Company2</key>
	<dict>
		<key>Name</key>
		<string>Branch</string>
	</dict>
</dict>
</plist>)");

/// One network with nothing but its name and, if given, one section.
std::string networkWith(const std::string& section)
{
    return std::string(header) + "<dict>\n<key>Company1</key>\n<dict>\n" + section +
           "<key>Name</key>\n<string>N</string>\n</dict>\n</dict>\n</plist>";
}

std::string sectionWith(const std::string& name, const std::string& entry)
{
    return "<key>" + name + "</key>\n<dict>\n" + entry + "</dict>\n";
}

struct Activation {
    const char* name;
    std::string entry;
    bool selected;

    friend void PrintTo(const Activation& row, std::ostream* out) { *out << row.name; }
};

class TavConfigurationModelTest : public testing::Test {
protected:
    TavConfigurationModel& model()
    {
        if (!m_model)
            m_model.emplace(&m_controller, &m_texts.alertPresenter);
        return *m_model;
    }

    ConfigurationPlace m_file;
    LocalizedTexts m_texts{"MSGOK_DLG_TITLE=Title\n"
                           "MSGOK_DLG_FILL_BOTH_COMMAND_LINE=Both commands\n"
                           "MSGOK_DLG_FILL_CORRECT_IP_ADDRESS=An address\n"};
    RecordingController m_controller;

private:
    std::optional<TavConfigurationModel> m_model;
};

class TavConfigurationModelActivation : public TavConfigurationModelTest,
                                        public testing::WithParamInterface<Activation> {};

} // namespace

TEST_F(TavConfigurationModelTest, ConstructionSendsAndWritesNothing)
{
    model();

    EXPECT_EQ(m_controller.messages, Messages());
    EXPECT_FALSE(m_file.exists());
}

TEST_F(TavConfigurationModelTest, WithoutFileOneNetworkNamedIntranetIsSaved)
{
    model().saveToPersistence(true, "/bin/up", "-u", "/bin/down", "-d", true, "10.1.2.3");

    EXPECT_EQ(m_file.read(), header + std::string(R"(<dict>
	<key>Company1</key>
	<dict>
		<key>Monitoring</key>
		<dict>
			<key>Activated</key>
			<string>true</string>
			<key>Address</key>
			<string>10.1.2.3</string>
			<key>Type</key>
			<string>IP</string>
		</dict>
		<key>Name</key>
		<string>Intranet</string>
		<key>PublicVPN</key>
		<dict>
			<key>Activated</key>
			<string>true</string>
			<key>StartArguments</key>
			<string>-u</string>
			<key>StartCommandLine</key>
			<string>/bin/up</string>
			<key>StopArguments</key>
			<string>-d</string>
			<key>StopCommandLine</key>
			<string>/bin/down</string>
		</dict>
	</dict>
</dict>
</plist>)"));
    EXPECT_EQ(m_controller.messages, Messages{"closeApplication"});
}

TEST_F(TavConfigurationModelTest, FileWithoutNetworkGetsOneNamedIntranet)
{
    m_file.write(header + std::string("<dict>\n</dict>\n</plist>"));

    model().saveToPersistence(false, "", "", "", "", false, "");

    EXPECT_NE(m_file.read().find("<string>Intranet</string>"), std::string::npos);
}

TEST_F(TavConfigurationModelTest, FirstNetworkIsEditedWhateverItsName)
{
    m_file.write(twoNetworks);

    model().loadFromPersistence();

    EXPECT_EQ(
        m_controller.messages,
        (Messages{
            "fillStartCommandLine /bin/start|start args", "fillSopCommandLine /bin/stop|stop args",
            "fillMonitoringAddress 10.0.0.1"}));
}

TEST_F(TavConfigurationModelTest, SaveChangesTheEditedSectionsOfTheFirstNetworkAlone)
{
    m_file.write(twoNetworks);

    model().saveToPersistence(true, "/bin/up", "", "/bin/down", "", false, "10.9.9.9");

    EXPECT_EQ(m_file.read(), header + std::string(R"(<dict>
	<key>Company1</key>
	<dict>
		<key>DedicatedAPN</key>
		<dict>
			<key>APN</key>
			<string>apn.example</string>
		</dict>
		<key>Monitoring</key>
		<dict>
			<key>Activated</key>
			<string>false</string>
			<key>Address</key>
			<string>10.9.9.9</string>
			<key>Type</key>
			<string>IP</string>
		</dict>
		<key>Name</key>
		<string>Head office</string>
		<key>PublicVPN</key>
		<dict>
			<key>Activated</key>
			<string>true</string>
			<key>StartArguments</key>
			<string></string>
			<key>StartCommandLine</key>
			<string>/bin/up</string>
			<key>StopArguments</key>
			<string></string>
			<key>StopCommandLine</key>
			<string>/bin/down</string>
		</dict>
	</dict>
	<key>Company2</key>
	<dict>
		<key>Name</key>
		<string>Branch</string>
	</dict>
</dict>
</plist>)"));
}

TEST_F(TavConfigurationModelTest, NetworkWithoutSectionsFillsEmptyTexts)
{
    m_file.write(networkWith(""));

    model().loadFromPersistence();

    EXPECT_EQ(
        m_controller.messages,
        (Messages{"fillStartCommandLine |", "fillSopCommandLine |", "fillMonitoringAddress "}));
}

TEST_F(TavConfigurationModelTest, NetworkWithoutSectionsHasNothingSelected)
{
    m_file.write(networkWith(""));

    EXPECT_FALSE(model().isVpnSelected());
    EXPECT_FALSE(model().isMonitoringSelected());
}

TEST_P(TavConfigurationModelActivation, DecidesWhetherTheVpnIsSelected)
{
    m_file.write(networkWith(sectionWith("PublicVPN", GetParam().entry)));

    EXPECT_EQ(model().isVpnSelected(), GetParam().selected);
    EXPECT_FALSE(model().isMonitoringSelected());
}

TEST_P(TavConfigurationModelActivation, DecidesWhetherMonitoringIsSelected)
{
    m_file.write(networkWith(sectionWith("Monitoring", GetParam().entry)));

    EXPECT_EQ(model().isMonitoringSelected(), GetParam().selected);
    EXPECT_FALSE(model().isVpnSelected());
}

INSTANTIATE_TEST_SUITE_P(
    Table, TavConfigurationModelActivation,
    testing::ValuesIn(std::vector<Activation>{
        {"True", "<key>Activated</key>\n<string>true</string>\n", true},
        {"False", "<key>Activated</key>\n<string>false</string>\n", false},
        {"OtherCase", "<key>Activated</key>\n<string>TRUE</string>\n", false},
        {"OtherText", "<key>Activated</key>\n<string>yes</string>\n", false},
        {"Absent", "", false},
    }),
    [](const auto& test) { return std::string(test.param.name); });

TEST_F(TavConfigurationModelTest, FileIsReadOnceAtConstruction)
{
    m_file.write(twoNetworks);
    model();

    m_file.write(networkWith(""));

    EXPECT_TRUE(model().isVpnSelected());
}

TEST_F(TavConfigurationModelTest, VpnWithoutStartCommandIsRefused)
{
    m_file.write(twoNetworks);

    model().saveToPersistence(true, "", "args", "/bin/down", "args", false, "");

    EXPECT_EQ(
        m_texts.alertPresenter.alerts,
        (Alerts{{AlertPresenter::Level::note, "Title", "Both commands"}}));
    EXPECT_EQ(m_file.read(), twoNetworks);
    EXPECT_EQ(m_controller.messages, Messages());
}

TEST_F(TavConfigurationModelTest, VpnWithoutStopCommandIsRefused)
{
    m_file.write(twoNetworks);

    model().saveToPersistence(true, "/bin/up", "", "", "", true, "10.0.0.1");

    EXPECT_EQ(
        m_texts.alertPresenter.alerts,
        (Alerts{{AlertPresenter::Level::note, "Title", "Both commands"}}));
    EXPECT_EQ(m_file.read(), twoNetworks);
    EXPECT_EQ(m_controller.messages, Messages());
}

TEST_F(TavConfigurationModelTest, MonitoringWithoutAddressIsRefused)
{
    m_file.write(twoNetworks);

    model().saveToPersistence(false, "", "", "", "", true, "");

    EXPECT_EQ(
        m_texts.alertPresenter.alerts,
        (Alerts{{AlertPresenter::Level::note, "Title", "An address"}}));
    EXPECT_EQ(m_file.read(), twoNetworks);
    EXPECT_EQ(m_controller.messages, Messages());
}

TEST_F(TavConfigurationModelTest, OnlyTheCommandLineAlertIsShownWhenTheAddressLacksToo)
{
    model().saveToPersistence(true, "/bin/up", "", "", "", true, "");

    EXPECT_EQ(
        m_texts.alertPresenter.alerts,
        (Alerts{{AlertPresenter::Level::note, "Title", "Both commands"}}));
    EXPECT_FALSE(m_file.exists());
}

TEST_F(TavConfigurationModelTest, RefusedSaveChangesNothingInMemory)
{
    m_file.write(twoNetworks);
    model().saveToPersistence(true, "", "", "", "", true, "");

    model().loadFromPersistence();

    EXPECT_EQ(m_controller.messages.front(), "fillStartCommandLine /bin/start|start args");
}

TEST_F(TavConfigurationModelTest, RefusedAddressChangesNothingInMemoryEither)
{
    m_file.write(twoNetworks);
    model().loadFromPersistence();
    const Messages before = std::exchange(m_controller.messages, {});
    model().saveToPersistence(true, "x", "", "y", "", true, "");

    model().loadFromPersistence();

    EXPECT_EQ(m_controller.messages, before);
}

TEST_F(TavConfigurationModelTest, SaveSucceedsAfterARefusal)
{
    model().saveToPersistence(false, "", "", "", "", true, "");
    model().saveToPersistence(false, "", "", "", "", true, "1.2.3.4");

    EXPECT_TRUE(m_file.exists());
    EXPECT_EQ(m_controller.messages, Messages{"closeApplication"});
}

TEST_F(TavConfigurationModelTest, AlertWhoseTextIsMissingShowsTheKey)
{
    const LocalizedTexts noTexts("");

    model().saveToPersistence(true, "", "", "", "", false, "");

    EXPECT_EQ(
        m_texts.alertPresenter.alerts,
        (Alerts{
            {AlertPresenter::Level::note, "MSGOK_DLG_TITLE", "MSGOK_DLG_FILL_BOTH_COMMAND_LINE"}}));
    EXPECT_EQ(noTexts.alertPresenter.alerts.size(), 2U);
}

TEST_F(TavConfigurationModelTest, UnselectedVpnMayLackItsCommands)
{
    model().saveToPersistence(false, "", "", "", "", false, "");

    EXPECT_TRUE(m_texts.alertPresenter.alerts.empty());
    EXPECT_EQ(m_controller.messages, Messages{"closeApplication"});
    EXPECT_NE(
        m_file.read().find("<key>PublicVPN</key>\n\t\t<dict>\n\t\t\t<key>Activated</key>\n"
                           "\t\t\t<string>false</string>"),
        std::string::npos);
}

TEST_F(TavConfigurationModelTest, UnselectedSectionsKeepTheirTexts)
{
    m_file.write(networkWith(""));

    model().saveToPersistence(false, "up", "u", "down", "d", false, "1.2.3.4");

    EXPECT_EQ(m_file.read(), header + std::string(R"(<dict>
	<key>Company1</key>
	<dict>
		<key>Monitoring</key>
		<dict>
			<key>Activated</key>
			<string>false</string>
			<key>Address</key>
			<string>1.2.3.4</string>
			<key>Type</key>
			<string>IP</string>
		</dict>
		<key>Name</key>
		<string>N</string>
		<key>PublicVPN</key>
		<dict>
			<key>Activated</key>
			<string>false</string>
			<key>StartArguments</key>
			<string>u</string>
			<key>StartCommandLine</key>
			<string>up</string>
			<key>StopArguments</key>
			<string>d</string>
			<key>StopCommandLine</key>
			<string>down</string>
		</dict>
	</dict>
</dict>
</plist>)"));
}

TEST_F(TavConfigurationModelTest, NothingIsTrimmedAndAnyAddressWillDo)
{
    model().saveToPersistence(true, " ", " a ", "\t", "", true, " not an address");

    EXPECT_TRUE(m_texts.alertPresenter.alerts.empty());
    EXPECT_NE(m_file.read().find("<string> a </string>"), std::string::npos);
    EXPECT_NE(m_file.read().find("<string> not an address</string>"), std::string::npos);
}

TEST_F(TavConfigurationModelTest, TextsAreSavedAndLoadedByteForByte)
{
    const std::string odd =
        "<b> & \"quoted\" 'single' \xC3\xA9\xE6\xBC\xA2\xF0\x9F\x98\x80 %s \xFF";
    const std::string long_(1000000, '7');
    model().saveToPersistence(true, odd, long_, odd, "", true, long_);
    RecordingController reader;

    TavConfigurationModel(&reader, &m_texts.alertPresenter).loadFromPersistence();

    EXPECT_EQ(
        reader.messages, (Messages{
                             "fillStartCommandLine " + odd + "|" + long_,
                             "fillSopCommandLine " + odd + "|", "fillMonitoringAddress " + long_}));
}

TEST_F(TavConfigurationModelTest, FileIsWrittenBeforeTheApplicationIsClosed)
{
    std::string fileAtTheEnd;
    m_controller.atClose = [&] { fileAtTheEnd = m_file.read(); };
    m_file.write(twoNetworks);

    model().saveToPersistence(false, "", "", "", "", false, "");

    EXPECT_NE(fileAtTheEnd, twoNetworks);
    EXPECT_EQ(fileAtTheEnd, m_file.read());
}

TEST_F(TavConfigurationModelTest, SaveClosesTheApplicationAlsoWhenTheFileCannotBeWritten)
{
    ASSERT_EQ(mkdir(m_file.path().c_str(), 0700), 0);

    model().saveToPersistence(false, "", "", "", "", false, "");

    EXPECT_EQ(m_controller.messages, Messages{"closeApplication"});
}

TEST_F(TavConfigurationModelTest, FifoInTheFilesPlaceCountsAsNoFileAndDoesNotHang)
{
    ASSERT_EQ(mkfifo(m_file.path().c_str(), 0600), 0);

    EXPECT_FALSE(model().isVpnSelected());
}

TEST_F(TavConfigurationModelTest, UnreadableTextCountsAsNoNetwork)
{
    m_file.write("no property list");

    model().loadFromPersistence();

    EXPECT_EQ(m_controller.messages.front(), "fillStartCommandLine |");
}

TEST_F(TavConfigurationModelTest, BrowseHandsBackTheControllersAnswerUnchanged)
{
    m_controller.chosenFile = " /opt/a b/\xC3\xA9 ";

    EXPECT_EQ(model().onBrowseAction(), m_controller.chosenFile);
    EXPECT_EQ(m_controller.messages, Messages{"browseAction"});
}

TEST_F(TavConfigurationModelTest, CancelledBrowseHandsBackNothing)
{
    m_controller.chosenFile = std::nullopt;

    EXPECT_EQ(model().onBrowseAction(), std::nullopt);
}

TEST_F(TavConfigurationModelTest, CancelClosesTheApplicationAndWritesNothing)
{
    m_file.write(twoNetworks);

    model().cancelApplication();

    EXPECT_EQ(m_controller.messages, Messages{"closeApplication"});
    EXPECT_EQ(m_file.read(), twoNetworks);
}
