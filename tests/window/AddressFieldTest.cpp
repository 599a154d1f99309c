#include "ConfigurationWindow.h"
#include "NetworkFile.h"

#include <QClipboard>
#include <QInputMethodEvent>

#include <string>

#include <gtest/gtest.h>

namespace {

class AddressFieldTest : public testing::Test {
protected:
    explicit AddressFieldTest(const std::string& stored = "")
        : m_window(
              NetworkFile{.monitoringActivated = "true", .address = stored}.bytes(),
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

/// The field holds a stored value that could not have been typed.
class AddressFieldWithStoredNameTest : public AddressFieldTest {
protected:
    AddressFieldWithStoredNameTest() : AddressFieldTest("host") {}
};

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

TEST_F(AddressFieldTest, TakesAPastedAddress)
{
    paste("10.0.0.1");

    EXPECT_EQ(field().value(), "10.0.0.1");
}

TEST_F(AddressFieldTest, RefusesAPastedTextAsAWhole)
{
    type("1.");
    paste("2.3 ");
    paste("host.example");
    paste("4\n");

    EXPECT_EQ(field().value(), "1.");
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

TEST_F(AddressFieldWithStoredNameTest, ChecksEditsAlsoAfterUndoHasBroughtTheNameBack)
{
    field().selectAll();
    type("1");
    field().undo();
    ASSERT_EQ(field().value(), "host");

    type("x");

    EXPECT_EQ(field().value(), "host");
}
