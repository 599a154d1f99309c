#include "ConfigurationPlace.h"
#include "LocalizedTexts.h"
#include "MarkedCalls.h"
#include "RecordingController.h"
#include "TavConfigurationModel.h"

#include <memory>
#include <vector>

#include <gtest/gtest.h>

using Model = TavConfigurationModel;

namespace {

class ModelCalls : public testing::TestWithParam<MarkedCall<Model>> {
protected:
    ConfigurationPlace file;
    LocalizedTexts texts{""};
    RecordingController controller;
    Model model{&controller, &texts.alertPresenter};
};

} // namespace

TEST_P(ModelCalls, AreMarkedWithTheirNameAndModel)
{
    expectMarked(GetParam().text, &model, [this] { GetParam().run(model); });
}

INSTANTIATE_TEST_SUITE_P(
    TavConfigurationModel, ModelCalls,
    testing::ValuesIn(std::vector<MarkedCall<Model>>{
        {"TavConfigurationModel::loadFromPersistence", [](Model& m) { m.loadFromPersistence(); }},
        {"TavConfigurationModel::saveToPersistence",
         [](Model& m) { m.saveToPersistence(false, "", "", "", "", false, ""); }},
        {"TavConfigurationModel::isVpnSelected", [](Model& m) { m.isVpnSelected(); }},
        {"TavConfigurationModel::isMonitoringSelected", [](Model& m) { m.isMonitoringSelected(); }},
        {"TavConfigurationModel::onBrowseAction", [](Model& m) { m.onBrowseAction(); }},
        {"TavConfigurationModel::cancelApplication", [](Model& m) { m.cancelApplication(); }}}));

TEST_F(ModelCalls, OfAnAlertAreMarkedInsideTheSave)
{
    const PublishedTracer tracer;

    model.saveToPersistence(true, "", "", "", "", false, "");

    EXPECT_THAT(
        callsIn(tracer.lines()),
        testing::IsSupersetOf(
            {"TavConfigurationModel::saveToPersistence", "  TavConfigurationModel::showAlert"}));
}

TEST_F(ModelCalls, CountTheModelFromConstructorToDestructor)
{
    expectCounted("TavConfigurationModel", [this] {
        return std::make_unique<Model>(&controller, &texts.alertPresenter);
    });
}

TEST_F(ModelCalls, OfTheModelsEndHoldThatOfItsConfiguration)
{
    auto ended = std::make_unique<Model>(&controller, &texts.alertPresenter);
    const PublishedTracer tracer;

    ended.reset();

    EXPECT_THAT(
        callsIn(tracer.lines()),
        testing::IsSupersetOf(
            {"TavConfigurationModel::destructor", "  CompanyNetworkConfiguration::destructor"}));
}
