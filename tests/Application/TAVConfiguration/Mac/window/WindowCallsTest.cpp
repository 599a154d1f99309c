#include "ConfigurationWindow.h"
#include "Later.h"
#include "MarkedCalls.h"
#include "MessageBoxAlertPresenter.h"
#include "MnemonicAssigner.h"
#include "TAV_AdminAppDelegate.h"

#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

using testing::Contains;

using Controller = TavConfigurationController;

namespace {

class ControllerCalls : public testing::TestWithParam<MarkedCall<Controller>> {
protected:
    ConfigurationWindow window{"", ""};
};

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
    expectCounted("MnemonicAssigner", [] { return std::make_unique<MnemonicAssigner>(); });
    expectCounted("MessageBoxAlertPresenter", [&] {
        return std::make_unique<MessageBoxAlertPresenter>(dialog);
    });
}

TEST(WindowObjects, EndOfTheControllerHoldsThatOfItsModel)
{
    const ConfigurationPlace file;
    const LocalizedTexts texts("");
    QDialog dialog;
    RecordingAlertPresenter alertPresenter;
    auto controller = std::make_unique<Controller>(dialog, alertPresenter);
    controller->awakeFromNib();
    const PublishedTracer tracer;

    controller.reset();

    EXPECT_THAT(
        callsIn(tracer.lines()),
        testing::IsSupersetOf(
            {"TavConfigurationController::destructor", "  TavConfigurationModel::destructor"}));
}
