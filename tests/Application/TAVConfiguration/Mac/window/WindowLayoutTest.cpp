#include "ConfigurationWindow.h"
#include "NetworkText.h"
#include "ShippedTexts.h"

#include <QAbstractEventDispatcher>
#include <QGroupBox>
#include <QKeySequence>
#include <QLayout>
#include <QStyle>
#include <QStyleOptionButton>

#include <map>
#include <set>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

const NetworkText on{.vpnActivated = "true", .monitoringActivated = "true"};

class WindowInLanguage : public testing::TestWithParam<const char*> {
protected:
    ConfigurationWindow m_window{on.bytes(), shippedTexts(GetParam())};
};

/// Every text stands whole in its control, and every control inside the window.
void expectNothingCut(const QDialog& window)
{
    for (const QWidget* const control : window.findChildren<QWidget*>()) {
        const std::string name = control->objectName().toStdString();
        EXPECT_TRUE(control->parentWidget()->rect().contains(control->geometry())) << name;
        if (const auto* const label = qobject_cast<const QLabel*>(control);
            label != nullptr && label->wordWrap()) {
            EXPECT_GE(label->height(), label->heightForWidth(label->width())) << name;
        } else if (label != nullptr || qobject_cast<const QAbstractButton*>(control) != nullptr) {
            EXPECT_GE(control->width(), control->sizeHint().width()) << name;
            EXPECT_GE(control->height(), control->sizeHint().height()) << name;
        } else if (qobject_cast<const QGroupBox*>(control) != nullptr) {
            EXPECT_GE(control->width(), control->minimumSizeHint().width()) << name;
            EXPECT_GE(control->height(), control->minimumSizeHint().height()) << name;
        }
    }
}

/// Does all that waits: what a control asks for is handed up to the window from event to event.
void settle()
{
    while (QAbstractEventDispatcher::instance()->processEvents(QEventLoop::AllEvents)) {
    }
}

/// Another font of the user than before, while it is in scope; what waits for that is done.
class ApplicationFont {
public:
    explicit ApplicationFont(const QFont& font) { set(font); }
    ~ApplicationFont() { set(m_former); }

    ApplicationFont(const ApplicationFont&) = delete;
    ApplicationFont& operator=(const ApplicationFont&) = delete;

private:
    static void set(const QFont& font)
    {
        QApplication::setFont(font);
        settle();
    }

    const QFont m_former = QApplication::font();
};

QFont largerFont()
{
    QFont font = QApplication::font();
    font.setPointSize(font.pointSize() + 7);
    return font;
}

void resize(QDialog& window, const QSize& size)
{
    window.resize(size);
    settle();
}

} // namespace

TEST_P(WindowInLanguage, CutsNoTextAtFirst)
{
    expectNothingCut(m_window.window);
}

TEST_P(WindowInLanguage, CutsNoTextWhenMadeAsSmallAsItGoes)
{
    resize(m_window.window, QSize(1, 1));

    expectNothingCut(m_window.window);
}

TEST_P(WindowInLanguage, CutsNoTextWhenMadeAsNarrowAsItGoes)
{
    resize(m_window.window, QSize(1, 1000));

    expectNothingCut(m_window.window);
}

TEST_P(WindowInLanguage, GivesEveryControlAMnemonicOfItsOwn)
{
    std::set<std::string> mnemonics;
    std::size_t controls = 0;
    const auto take = [&](const QString& text) {
        const QKeySequence mnemonic = QKeySequence::mnemonic(text);
        EXPECT_FALSE(mnemonic.isEmpty()) << text.toStdString();
        EXPECT_TRUE(mnemonics.insert(mnemonic.toString().toStdString()).second)
            << text.toStdString();
        ++controls;
    };
    for (const QAbstractButton* const button : m_window.window.findChildren<QAbstractButton*>())
        take(button->text());
    for (const QLabel* const label : m_window.window.findChildren<QLabel*>())
        if (label->buddy() != nullptr)
            take(label->text());

    EXPECT_EQ(controls, 13U);
}

TEST_P(WindowInLanguage, ReportsNoMissingText)
{
    EXPECT_TRUE(m_window.alertPresenter.alerts.empty());
}

INSTANTIATE_TEST_SUITE_P(
    Languages, WindowInLanguage, testing::Values("EN", "fr", "de", "es"),
    [](const auto& test) { return std::string(test.param); });

TEST(WindowLayout, OpensWideEnoughForAPathAndNoHigherThanItsTexts)
{
    const ConfigurationWindow window("", shippedTexts("EN"));
    const int width = 90 * window.window.fontMetrics().averageCharWidth();

    EXPECT_EQ(window.window.size(), QSize(width, window.window.minimumHeight()));
}

TEST(WindowLayout, CutsNoVeryLongTranslationOfSeveralLines)
{
    std::string texts;
    for (const char* const key :
         {"EXPLANATION_TEXT", "GROUPBOX_VPN_LABEL", "NO_VPN_RADIOBUTTON", "STATIC_VPN_START_LABEL",
          "STATIC_VPN_START_COMMAND_LINE", "BROWSE_BUTTON", "MONITORING_IP_ADDRESS", "SAVE_BUTTON"})
        texts +=
            std::string(key) + "=Donaudampfschifffahrtsgesellschaft\\nund noch viel mehr davon\n";
    ConfigurationWindow window("", texts);

    expectNothingCut(window.window);
    EXPECT_EQ(window.window.size(), window.window.minimumSize());
    resize(window.window, QSize(1, 1));
    expectNothingCut(window.window);
}

TEST(WindowLayout, FontThatChangesMeanwhileReachesEveryControlAndTitlesKeepTheirSize)
{
    const ConfigurationWindow window("", shippedTexts("EN"));

    const ApplicationFont another(QFont("Another", 17));

    for (const QWidget* const control : window.window.findChildren<QWidget*>()) {
        const std::string name = control->objectName().toStdString();
        EXPECT_EQ(control->font().pointSize(), name.ends_with("Title") ? 12 : 17) << name;
        EXPECT_EQ(control->font().family(), "Another") << name;
    }
}

TEST(WindowLayout, CutsNoTextInAFontThatGrowsMeanwhile)
{
    ConfigurationWindow window("", shippedTexts("EN"));
    const QSize before = window.window.minimumSize();

    const ApplicationFont larger(largerFont());

    expectNothingCut(window.window);
    resize(window.window, QSize(1, 1));
    expectNothingCut(window.window);
    EXPECT_GT(window.window.width(), before.width());
    EXPECT_GT(window.window.height(), before.height());
}

TEST(WindowLayout, GetsSmallerAgainWithItsFont)
{
    ConfigurationWindow window("", shippedTexts("EN"));
    const QSize before = window.window.minimumSize();

    {
        const ApplicationFont larger(largerFont());
    }

    EXPECT_EQ(window.window.minimumSize(), before);
}

TEST(WindowLayout, WhatBelongsToAChoiceStandsBelowTheTextOfTheChoice)
{
    const ConfigurationWindow window("", shippedTexts("EN"));
    const auto& choice = window.outlet<QRadioButton>("radioButtonsWithVPN");
    QStyleOptionButton option;
    option.initFrom(&choice);
    const int text =
        choice.style()->subElementRect(QStyle::SE_RadioButtonContents, &option, &choice).left();

    for (const char* const name : {"vpnCommandsLayout", "addressLayout"})
        EXPECT_EQ(
            window.window.findChild<QLayout*>(name)->contentsMargins(), QMargins(text, 0, 0, 0));
}

TEST(WindowLayout, FieldsGrowWithTheWindow)
{
    ConfigurationWindow window("", shippedTexts("EN"));
    std::map<std::string, int> widths;
    for (const char* const field :
         {"m_startCommandLineField", "m_startArgsField", "m_stopCommandLineField",
          "m_stopArgsField", "m_IPAddressTextField"})
        widths[field] = window.outlet(field).width();
    const int buttonWidth = window.outlet("saveButton").width();

    resize(window.window, window.window.size() + QSize(300, 200));

    for (const auto& [field, width] : widths)
        EXPECT_EQ(window.outlet(field).width(), width + 300) << field;
    EXPECT_EQ(window.outlet("saveButton").width(), buttonWidth);
}

TEST(WindowLayout, TabWalksTheControlsInReadingOrder)
{
    const ConfigurationWindow window(on.bytes(), shippedTexts("EN"));
    window.outlet("radioButtonsWithVPN").setFocus();

    std::vector<std::string> walked;
    for (int i = 0; i < 11; ++i) {
        walked.push_back(window.window.focusWidget()->objectName().toStdString());
        QTest::keyClick(window.window.focusWidget(), Qt::Key_Tab);
    }

    EXPECT_EQ(
        walked,
        (std::vector<std::string>{
            "radioButtonsWithVPN", "m_startCommandLineField", "browseStartButton",
            "m_startArgsField", "m_stopCommandLineField", "browseStopButton", "m_stopArgsField",
            "radioButtonEnableMonitoring", "m_IPAddressTextField", "cancelButton", "saveButton"}));
}

TEST(WindowLayout, MnemonicOfALabelLeadsToItsField)
{
    ConfigurationWindow window(on.bytes(), shippedTexts("EN"));
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window.window));
    const auto& label = window.outlet<QLabel>("m_IPAddressLabel");
    const int key = QKeySequence::mnemonic(label.text())[0].key();

    QTest::keyClick(&window.outlet("saveButton"), Qt::Key(key), Qt::AltModifier);

    EXPECT_TRUE(window.outlet("m_IPAddressTextField").hasFocus());
}

TEST(WindowLayout, SetUpBringsTheWindowToTheFrontOfAnother)
{
    const ConfigurationPlace file;
    LocalizedTexts texts(shippedTexts("EN"));
    QDialog window(nullptr, Qt::Window);
    TavConfigurationController controller(window, texts.alertPresenter);
    window.show();
    QWidget other;
    other.show();
    other.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&other));

    controller.awakeFromNib();

    EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
}

TEST(WindowLayout, WindowIsShown)
{
    const ConfigurationWindow window("", shippedTexts("EN"));

    EXPECT_TRUE(window.window.isVisible());
}
