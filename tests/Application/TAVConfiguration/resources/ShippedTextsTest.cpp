#include "ShippedTexts.h"

#include "LocalizationFile.h"
#include "Utf8Text.h"

#include <algorithm>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

const std::vector<std::string> keys = {
    "BROWSE_BUTTON",
    "CANCEL_BUTTON",
    "EXPLANATION_TEXT",
    "GROUPBOX_MONITORING_LABEL",
    "GROUPBOX_VPN_LABEL",
    "MONITORING_DISABLE_RADIO_BUTTON",
    "MONITORING_ENABLE_RADIO_BUTTON",
    "MONITORING_IP_ADDRESS",
    "MSGOK_DLG_FILL_BOTH_COMMAND_LINE",
    "MSGOK_DLG_FILL_CORRECT_IP_ADDRESS",
    "MSGOK_DLG_TITLE",
    "NO_VPN_RADIOBUTTON",
    "SAVE_BUTTON",
    "STATIC_VPN_START_ARGS",
    "STATIC_VPN_START_COMMAND_LINE",
    "STATIC_VPN_START_LABEL",
    "STATIC_VPN_STOP_ARGS",
    "STATIC_VPN_STOP_COMMAND_LINE",
    "STATIC_VPN_STOP_LABEL",
    "WITH_VPN_RADIOBUTTON",
};

LocalizationFile::Entries texts(const std::string& language)
{
    return LocalizationFile::parse(shippedTexts(language)).value_or(LocalizationFile::Entries());
}

class ShippedTexts : public testing::TestWithParam<const char*> {};

} // namespace

TEST_P(ShippedTexts, HoldEveryKeyAndNoOther)
{
    std::vector<std::string> found;
    for (const auto& [key, text] : texts(GetParam()))
        found.push_back(key);

    EXPECT_EQ(found, keys);
}

TEST_P(ShippedTexts, AreNeitherEmptyNorFramedByBlanks)
{
    for (const auto& [key, text] : texts(GetParam())) {
        EXPECT_NE(text, "") << key;
        EXPECT_EQ(text, Utf8Text::trim(text)) << key;
    }
}

INSTANTIATE_TEST_SUITE_P(
    Languages, ShippedTexts, testing::Values("EN", "en", "fr", "de", "es"),
    [](const auto& test) { return std::string(test.param); });

TEST(ShippedTexts, AreTranslated)
{
    const LocalizationFile::Entries english = texts("EN");
    for (const char* const language : {"fr", "de", "es"})
        for (const char* const key : {"EXPLANATION_TEXT", "SAVE_BUTTON", "MSGOK_DLG_TITLE"})
            EXPECT_NE(texts(language)[key], english.at(key)) << language;
}

TEST(ShippedTexts, AreTheSameForEnglishUsersAndForTheFallback)
{
    EXPECT_EQ(shippedTexts("en"), shippedTexts("EN"));
}
