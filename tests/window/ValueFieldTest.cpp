#include "ValueField.h"

#include "Typing.h"

#include <QApplication>
#include <QClipboard>
#include <QTest>

#include <string>

#include <gtest/gtest.h>

namespace {

void paste(ValueField& field, const QString& text)
{
    QApplication::clipboard()->setText(text);
    field.paste();
}

} // namespace

TEST(ValueField, ShowsAndYieldsTextsToTheLetter)
{
    const std::string text =
        " <b>&amp; \"quoted\" 'single' \xC3\xA9\xE6\xBC\xA2\xF0\x9F\x98\x80 %s\t";
    ValueField field;

    field.setValue(text);

    EXPECT_EQ(field.text().toStdString(), text);
    EXPECT_EQ(field.value(), text);
}

TEST(ValueField, YieldsWhatIsTypedAsUtf8)
{
    ValueField field;

    typeText(field, QStringLiteral("\u00E9 <&>"));

    EXPECT_EQ(field.value(), "\xC3\xA9 <&>");
}

TEST(ValueField, YieldsBytesThatAreNotUtf8UnchangedUntilEdited)
{
    ValueField field;

    field.setValue("caf\xE9");
    EXPECT_EQ(field.value(), "caf\xE9");

    typeText(field, "s");
    EXPECT_EQ(field.value(), "caf\xEF\xBF\xBDs");
}

TEST(ValueField, YieldsALineBreakOfTheValueUnchangedUntilEdited)
{
    ValueField field;

    field.setValue("a\nb\r");
    EXPECT_EQ(field.value(), "a\nb\r");

    typeText(field, "c");
    EXPECT_EQ(field.value(), "a b c");
}

TEST(ValueField, TurnsPastedLineBreaksAndNulIntoBlanks)
{
    ValueField field;

    paste(field, QStringLiteral("/bin/vpn\n-a\r\n") + QChar(u'\0') + u'b');

    EXPECT_EQ(field.value(), "/bin/vpn -a   b");
}

TEST(ValueField, YieldsTheLastValueThatWasSet)
{
    ValueField field;
    field.setValue("first\xFF");

    field.setValue("");

    EXPECT_EQ(field.value(), "");
}

TEST(ValueField, HoldsAMillionCharacters)
{
    const std::string text(1000000, 'x');
    ValueField field;

    paste(field, QString::fromStdString(text));
    typeText(field, "y");

    EXPECT_EQ(field.value(), text + "y");
}
