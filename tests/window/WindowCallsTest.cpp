#include "ConfigurationWindow.h"
#include "Later.h"
#include "MarkedCalls.h"
#include "MessageBoxAlertPresenter.h"
#include "MnemonicAssigner.h"
#include "NetworkFile.h"
#include "SingleLineFormatter.h"
#include "TAV_AdminAppDelegate.h"

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

using testing::Contains;
using testing::ElementsAre;

using Controller = TavConfigurationController;

namespace {

class ControllerCalls : public testing::TestWithParam<MarkedCall<Controller>> {
protected:
    ConfigurationWindow window{"", ""};
};

/// The calls that the outermost one of the trace makes itself.
std::vector<std::string> innerCallsIn(const std::string& trace)
{
    std::vector<std::string> calls;
    for (const std::string& call : callsIn(trace))
        if (call.starts_with("  ") && call.find_first_not_of(' ') == 2)
            calls.push_back(call.substr(2));
    return calls;
}

/// How often the trace has the call, at whatever depth.
std::ptrdiff_t timesOf(const std::string& name, const std::string& trace)
{
    const std::vector<std::string> calls = callsIn(trace);
    return std::count_if(calls.begin(), calls.end(), [&](const std::string& call) {
        return call.substr(call.find_first_not_of(' ')) == name;
    });
}

} // namespace

TEST_P(ControllerCalls, AreMarkedWithTheirNameAndController)
{
    expectMarked(
        GetParam().text, &window.controller, [this] { GetParam().run(window.controller); });
}

INSTANTIATE_TEST_SUITE_P(
    TavConfigurationController, ControllerCalls,
    testing::ValuesIn(std::vector<MarkedCall<Controller>>{
        {"TavConfigurationController::awakeFromNib", [](Controller& c) { c.awakeFromNib(); }},
        {"TavConfigurationController::onWithVPN", [](Controller& c) { c.onWithVPN(); }},
        {"TavConfigurationController::onWithoutVPN", [](Controller& c) { c.onWithoutVPN(); }},
        {"TavConfigurationController::onEnableMonitoring",
         [](Controller& c) { c.onEnableMonitoring(); }},
        {"TavConfigurationController::onDisableMonitoring",
         [](Controller& c) { c.onDisableMonitoring(); }},
        {"TavConfigurationController::save", [](Controller& c) { c.save(); }},
        {"TavConfigurationController::cancel", [](Controller& c) { c.cancel(); }},
        {"TavConfigurationController::fillStartCommandLine",
         [](Controller& c) { c.fillStartCommandLine("", ""); }},
        {"TavConfigurationController::fillSopCommandLine",
         [](Controller& c) { c.fillSopCommandLine("", ""); }},
        {"TavConfigurationController::fillMonitoringAddress",
         [](Controller& c) { c.fillMonitoringAddress(""); }},
        {"TavConfigurationController::closeApplication",
         [](Controller& c) { c.closeApplication(); }}}));

TEST_F(ControllerCalls, OfTheFileChooserAreMarked)
{
    const auto expectBrowsingMarked = [this](const char* text, const auto& browse) {
        later([] { QApplication::activeModalWidget()->close(); });
        expectMarked(text, &window.controller, browse);
    };
    Controller& controller = window.controller;

    expectBrowsingMarked(
        "TavConfigurationController::browseStartScript", [&] { controller.browseStartScript(); });
    expectBrowsingMarked(
        "TavConfigurationController::browseStopScript", [&] { controller.browseStopScript(); });
    expectBrowsingMarked(
        "TavConfigurationController::browseAction", [&] { controller.browseAction(); });
}

TEST_F(ControllerCalls, OfTheSetUpAreInTheirOrder)
{
    QDialog dialog;
    Controller controller(dialog, window.alertPresenter);
    const PublishedTracer tracer;

    controller.awakeFromNib();

    EXPECT_THAT(
        innerCallsIn(tracer.lines()),
        ElementsAre(
            "TavConfigurationModel::constructor", "WindowTexts::show",
            "TavConfigurationModel::loadFromPersistence",
            "TavConfigurationController::showVpnChoice",
            "TavConfigurationController::showMonitoringChoice",
            "TavConfigurationController::indentChoices", "TavConfigurationController::fitWindow"));
}

TEST_F(ControllerCalls, OfBrowsingHandTheChoiceThroughTheModel)
{
    later([] { QApplication::activeModalWidget()->close(); });
    const PublishedTracer tracer;

    window.controller.browseStopScript();

    const std::vector<std::string> calls = callsIn(tracer.lines());
    EXPECT_THAT(calls, Contains("  TavConfigurationController::browse"));
    EXPECT_THAT(calls, Contains("    TavConfigurationModel::onBrowseAction"));
    EXPECT_THAT(calls, Contains("      TavConfigurationController::browseAction"));
}

TEST_F(ControllerCalls, OfSwitchingTheVpnColourItsLabels)
{
    const PublishedTracer tracer;

    window.controller.onWithVPN();

    EXPECT_THAT(
        callsIn(tracer.lines()),
        ElementsAre(
            "TavConfigurationController::onWithVPN", "  TavConfigurationController::enableVpn",
            "    TavConfigurationController::colourVpnLabels"));
}

TEST(WindowCalls, TakeTheChoicesOfTheFileOnce)
{
    for (const bool on : {false, true}) {
        const std::string activated = on ? "true" : "false";
        const NetworkFile file{.vpnActivated = activated, .monitoringActivated = activated};
        const PublishedTracer tracer;

        const ConfigurationWindow window(file.bytes(), "");

        const std::string lines = tracer.lines();
        EXPECT_EQ(timesOf("TavConfigurationController::onWithVPN", lines), on ? 1 : 0);
        EXPECT_EQ(timesOf("TavConfigurationController::onWithoutVPN", lines), on ? 0 : 1);
        EXPECT_EQ(timesOf("TavConfigurationController::onEnableMonitoring", lines), on ? 1 : 0);
        EXPECT_EQ(timesOf("TavConfigurationController::onDisableMonitoring", lines), on ? 0 : 1);
    }
}

TEST(WindowCalls, TakeAChoiceOfTheUserOnce)
{
    const ConfigurationWindow window("", "");
    for (const auto& [cell, action] : std::vector<std::pair<std::string, std::string>>{
             {"radioButtonsWithVPN", "onWithVPN"},
             {"radioButtonsWithoutVPN", "onWithoutVPN"},
             {"radioButtonEnableMonitoring", "onEnableMonitoring"},
             {"radioButtonDisableMonitoring", "onDisableMonitoring"}}) {
        const PublishedTracer tracer;

        window.click(cell);

        const std::vector<std::string> calls = callsIn(tracer.lines());
        ASSERT_FALSE(calls.empty()) << cell;
        EXPECT_EQ(calls.front(), "TavConfigurationController::" + action);
        EXPECT_EQ(timesOf(calls.front(), tracer.lines()), 1);
        window.click(cell);
        EXPECT_EQ(timesOf(calls.front(), tracer.lines()), 1) << "nothing has changed";
    }
}

TEST(WindowCalls, ShowEachTextUnderItsName)
{
    const PublishedTracer tracer;

    const ConfigurationWindow window("", "");

    const std::string lines = tracer.lines();
    EXPECT_EQ(timesOf("WindowTexts::show", lines), 1);
    EXPECT_EQ(timesOf("showText", lines), 14);
    EXPECT_EQ(timesOf("showTitle", lines), 4);
    EXPECT_EQ(timesOf("localized", lines), 18);
    EXPECT_EQ(timesOf("nameFields", lines), 1);
    EXPECT_EQ(timesOf("nameWithin", lines), 6);
    EXPECT_EQ(timesOf("assignMnemonics", lines), 1);
    EXPECT_EQ(timesOf("MnemonicAssigner::assign", lines), 13);
    EXPECT_GE(timesOf("MnemonicAssigner::freeLetter", lines), 13);
}

TEST(WindowCalls, OfTheDelegateAreMarkedWithTheirNameAndDelegate)
{
    TAV_AdminAppDelegate delegate;

    expectMarked("TAV_AdminAppDelegate::window", &delegate, [&] { delegate.window(); });
    expectMarked("TAV_AdminAppDelegate::setWindow", &delegate, [&] { delegate.setWindow({}); });
    expectMarked("TAV_AdminAppDelegate::applicationDidFinishLaunching", &delegate, [&] {
        delegate.applicationDidFinishLaunching();
    });
}

TEST(WindowCalls, OfAValueFieldAreMarkedWithTheirNameAndField)
{
    ValueField field;

    expectMarked("ValueField::setValue", &field, [&] { field.setValue("x"); });
    expectMarked("ValueField::value", &field, [&] { field.value(); });
}

TEST(WindowObjects, AreCountedFromConstructorToDestructor)
{
    QDialog dialog;
    RecordingAlertPresenter alertPresenter;

    expectCounted("TavConfigurationController", [&] {
        return std::make_unique<Controller>(dialog, alertPresenter);
    });
    expectCounted("TAV_AdminAppDelegate", [] { return std::make_unique<TAV_AdminAppDelegate>(); });
    expectCounted("ValueField", [] { return std::make_unique<ValueField>(); });
    expectCounted("SingleLineFormatter", [] { return std::make_unique<SingleLineFormatter>(); });
    expectCounted("MnemonicAssigner", [] { return std::make_unique<MnemonicAssigner>(); });
    expectCounted("MessageBoxAlertPresenter", [&] {
        return std::make_unique<MessageBoxAlertPresenter>(dialog);
    });
}
