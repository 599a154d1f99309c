#include "ConfigurationWindow.h"
#include "EditingWay.h"
#include "NetworkText.h"

#include <string>

#include <gtest/gtest.h>

namespace {

class AddressFieldTest : public testing::Test {
protected:
    explicit AddressFieldTest(const std::string& stored = "")
        : m_window(
              NetworkText{.monitoringActivated = "true", .address = stored}.bytes(),
              "MONITORING_IP_ADDRESS=Address\n")
    {
    }

    ValueField& field() { return m_window.outlet<ValueField>("m_IPAddressTextField"); }
    void type(const char* text) { typeText(field(), QString::fromUtf8(text)); }
    void paste(const char* text)
    {
        QApplication::clipboard()->setText(QString::fromUtf8(text));
        field().paste();
    }

    ConfigurationWindow m_window;
};

class AddressFieldEditedBy : public AddressFieldTest,
                             public testing::WithParamInterface<EditingWay> {};

/// The field holds a stored value that could not have been typed.
class AddressFieldWithStoredNameTest : public AddressFieldTest {
protected:
    AddressFieldWithStoredNameTest() : AddressFieldTest("host") {}
};

class AddressFieldWithStoredNameEditedBy : public AddressFieldWithStoredNameTest,
                                           public testing::WithParamInterface<EditingWay> {};

} // namespace

TEST_F(AddressFieldTest, RefusesEachOtherCharacterAsItIsTyped)
{
    type("1a9 2.-x3/:.4");

    EXPECT_EQ(field().value(), "192.3.4");
}

TEST_F(AddressFieldTest, AcceptsWhatIsNoAddress)
{
    type("1.2.3.4.5");
    EXPECT_EQ(field().value(), "1.2.3.4.5");

    field().clear();
    type("999.1");
    EXPECT_EQ(field().value(), "999.1");
}

TEST_F(AddressFieldTest, AcceptsDigitsOfEveryScript)
{
    type("\xEF\xBC\x91.\xD9\xA2");

    EXPECT_EQ(field().value(), "\xEF\xBC\x91.\xD9\xA2");
}

TEST_F(AddressFieldTest, AcceptsADigitBeyondTheBasicPlaneFromAnInputMethod)
{
    QInputMethodEvent event;
    event.setCommitString(QStringLiteral("\U0001D7D9"));
    QApplication::sendEvent(&field(), &event);

    EXPECT_EQ(field().value(), "\xF0\x9D\x9F\x99");
}

TEST_F(AddressFieldTest, RefusesALetterFromAnInputMethod)
{
    QInputMethodEvent event;
    event.setCommitString(QStringLiteral("\u00E9"));
    QApplication::sendEvent(&field(), &event);

    EXPECT_EQ(field().value(), "");
}

TEST_P(AddressFieldEditedBy, TakesAnAddress)
{
    type("10.");

    GetParam().append(field(), "0.0.1");

    EXPECT_EQ(field().value(), "10.0.0.1");
}

TEST_P(AddressFieldEditedBy, RefusesATextAsAWhole)
{
    type("1.");

    for (const char* const refused : {"2.3 ", "x", " ", "2.x.3", "host.example", "4\n", "-1"}) {
        GetParam().append(field(), QString::fromUtf8(refused));
        EXPECT_EQ(field().value(), "1.") << refused;
        EXPECT_EQ(field().cursorPosition(), 2) << refused;
    }
}

TEST_P(AddressFieldWithStoredNameEditedBy, KeepsTheName)
{
    for (const char* const refused : {"x", "1", ".example"}) {
        GetParam().append(field(), QString::fromUtf8(refused));
        EXPECT_EQ(field().value(), "host") << refused;
    }
}

INSTANTIATE_TEST_SUITE_P(
    Ways, AddressFieldEditedBy, testing::ValuesIn(editingWays()),
    [](const auto& test) { return std::string(test.param.name); });
INSTANTIATE_TEST_SUITE_P(
    Ways, AddressFieldWithStoredNameEditedBy, testing::ValuesIn(editingWays()),
    [](const auto& test) { return std::string(test.param.name); });

TEST_F(AddressFieldTest, KeepsItsHistoryWhenTypingIsRefused)
{
    type("1");
    paste("2");

    type("x");
    field().undo();
    EXPECT_EQ(field().value(), "1");

    field().redo();
    EXPECT_EQ(field().value(), "12");
}

TEST_F(AddressFieldTest, CanBeEmptiedAgain)
{
    type("1");
    QTest::keyClick(&field(), Qt::Key_Backspace);

    EXPECT_EQ(field().value(), "");
}

TEST_F(AddressFieldTest, HasNoLengthLimit)
{
    const std::string digits(1000000, '7');

    paste(digits.c_str());
    type("8");

    EXPECT_EQ(field().value(), digits + "8");
}

TEST_F(AddressFieldWithStoredNameTest, ShowsTheStoredName)
{
    EXPECT_EQ(field().value(), "host");
}

TEST_F(AddressFieldWithStoredNameTest, RefusesEditsThatKeepALetter)
{
    type("1x");
    QTest::keyClick(&field(), Qt::Key_Backspace);
    field().setCursorPosition(0);
    paste("2");

    EXPECT_EQ(field().value(), "host");
}

TEST_F(AddressFieldWithStoredNameTest, TakesAnAddressInItsPlace)
{
    field().selectAll();
    type("10.0.0.1");

    EXPECT_EQ(field().value(), "10.0.0.1");
}

TEST_F(AddressFieldWithStoredNameTest, CanBeEmptied)
{
    field().selectAll();
    QTest::keyClick(&field(), Qt::Key_Delete);

    EXPECT_EQ(field().value(), "");
}

TEST_F(AddressFieldWithStoredNameTest, KeepsTheCursorWhereAnEditIsRefused)
{
    field().setCursorPosition(2);

    type("x");
    EXPECT_EQ(field().cursorPosition(), 2);
    QTest::keyClick(&field(), Qt::Key_Backspace);
    EXPECT_EQ(field().cursorPosition(), 2);
    QTest::keyClick(&field(), Qt::Key_Delete);
    EXPECT_EQ(field().cursorPosition(), 2);
    EXPECT_EQ(field().value(), "host");
}

TEST_F(AddressFieldWithStoredNameTest, IsReplacedOrClearedWholeThroughAccessibility)
{
    accessibleText(field()).deleteText(1, 3);
    EXPECT_EQ(field().value(), "host");

    accessibleText(field()).replaceText(0, 4, "10.0.0.1");
    EXPECT_EQ(field().value(), "10.0.0.1");

    accessibleText(field()).replaceText(0, 8, "host");
    EXPECT_EQ(field().value(), "host");

    accessibleText(field()).deleteText(0, 4);
    EXPECT_EQ(field().value(), "");
}

TEST_F(AddressFieldWithStoredNameTest, ComesBackByUndoAndGoesAgainByRedo)
{
    field().selectAll();
    type("1");

    field().undo();
    EXPECT_EQ(field().value(), "host");

    field().redo();
    EXPECT_EQ(field().value(), "1");
}

TEST_F(AddressFieldWithStoredNameTest, ChecksEditsAlsoAfterUndoHasBroughtTheNameBack)
{
    field().selectAll();
    type("1");
    field().undo();
    ASSERT_EQ(field().value(), "host");
    field().deselect();
    field().setCursorPosition(2);

    type("x");

    EXPECT_EQ(field().value(), "host");
    EXPECT_EQ(field().cursorPosition(), 2);
}
