#include "ConfigurationWindow.h"
#include "NetworkText.h"
#include "ShippedTexts.h"

#include <functional>
#include <string>
#include <utility>

#include <gtest/gtest.h>

namespace {

/// Does what the test says at each alert.
class ActingAlertPresenter : public AlertPresenter {
public:
    explicit ActingAlertPresenter(std::function<void()> act) : m_act(std::move(act)) {}

    bool showAlert(Level /*level*/, const std::string& /*title*/, const std::string&) override
    {
        m_act();
        return true;
    }

private:
    std::function<void()> m_act;
};

/// A window that has its controls and is not set up yet; every text is missing.
class WindowSetUpTest : public testing::Test {
protected:
    WindowSetUpTest() { m_file.write(NetworkText{.startCommandLine = "/stored"}.bytes()); }

    std::string startCommandLine() const
    {
        return m_window.findChild<ValueField*>("m_startCommandLineField")->value();
    }

    void setUpWith(ActingAlertPresenter& alertPresenter)
    {
        Localizer::getInstance()->setAlertPresenter(&alertPresenter);
        m_controller.awakeFromNib();
    }

    ConfigurationPlace m_file;
    LocalizedTexts m_texts{""};
    QDialog m_window{nullptr, Qt::Window};
    TavConfigurationController m_controller{m_window, m_texts.alertPresenter};
};

} // namespace

TEST_F(WindowSetUpTest, ReadsTheFileBeforeMissingTextsAreTold)
{
    ActingAlertPresenter alertPresenter(
        [&] { m_file.write(NetworkText{.startCommandLine = "/written since"}.bytes()); });

    setUpWith(alertPresenter);

    EXPECT_EQ(startCommandLine(), "/stored");
}

TEST_F(WindowSetUpTest, FillsAndShowsTheWindowOnceMissingTextsAreTold)
{
    std::string filled;
    bool shown = false;
    ActingAlertPresenter alertPresenter([&] {
        filled += startCommandLine();
        shown = shown || m_window.isVisible();
    });

    setUpWith(alertPresenter);

    EXPECT_EQ(filled, "");
    EXPECT_FALSE(shown);
    EXPECT_EQ(startCommandLine(), "/stored");
    EXPECT_TRUE(m_window.isVisible());
}

TEST_F(WindowSetUpTest, WindowThatIsNotSetUpClosesAndDoesNothingElse)
{
    m_window.show();

    for (auto* const button : m_window.findChildren<QAbstractButton*>())
        button->click();
    m_window.close();

    EXPECT_FALSE(m_window.isVisible());
    EXPECT_EQ(m_file.read(), NetworkText{.startCommandLine = "/stored"}.bytes());
}

TEST(WindowSetUp, DoneTwiceShowsTextsAndFileAnewAndActsOnce)
{
    ConfigurationWindow window(
        NetworkText{.address = "1"}.bytes(), shippedTexts("EN") + "SAVE_BUTTON=Save & go\n");
    window.file.write(NetworkText{.vpnActivated = "true", .address = "2"}.bytes());

    window.controller.awakeFromNib();
    window.click("saveButton");

    EXPECT_EQ(window.outlet<QLabel>("vpnBoxTitle").text(), "Public VPN");
    EXPECT_EQ(window.outlet<QAbstractButton>("saveButton").text(), "&Save && go");
    EXPECT_EQ(window.outlet("saveButton").accessibleName(), "Save & go");
    EXPECT_EQ(window.value("m_IPAddressTextField"), "2");
    EXPECT_TRUE(window.outlet("m_startArgsField").isEnabled());
    EXPECT_EQ(window.alertPresenter.alerts.size(), 1U); // that of the VPN without a command
}
