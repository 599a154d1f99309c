#include "ValueField.h"

#include "EditingWay.h"
#include "Typing.h"

#include <QTest>

#include <string>

#include <gtest/gtest.h>

namespace {

void paste(ValueField& field, const QString& text)
{
    QApplication::clipboard()->setText(text);
    field.paste();
}

class ValueFieldEditedBy : public testing::TestWithParam<EditingWay> {};

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

TEST_P(ValueFieldEditedBy, TurnsLineBreaksAndNulIntoBlanks)
{
    ValueField field;
    field.setValue("sh ");

    GetParam().append(field, QStringLiteral("/bin/vpn\n-a\r\n") + QChar(u'\0') + u'b');

    EXPECT_EQ(field.value(), "sh /bin/vpn -a   b");
}

TEST_P(ValueFieldEditedBy, LeavesEveryOtherTextAlone)
{
    const QString odd = QStringLiteral(" <b>&\t\"\u00E9\u2028\U0001F600 ");
    ValueField field;

    GetParam().append(field, odd);

    EXPECT_EQ(field.value(), odd.toStdString());
}

INSTANTIATE_TEST_SUITE_P(
    Ways, ValueFieldEditedBy, testing::ValuesIn(editingWays()),
    [](const auto& test) { return std::string(test.param.name); });

TEST(ValueField, KeepsItsHistoryWhenALineBreakIsPasted)
{
    ValueField field;
    field.setValue("stored");
    typeText(field, "X");

    paste(field, "a\nb");
    EXPECT_EQ(field.value(), "storedXa b");

    field.undo();
    EXPECT_EQ(field.value(), "storedX");
    field.undo();
    EXPECT_EQ(field.value(), "stored");
}

TEST(ValueField, YieldsTheStoredBytesAgainAfterUndo)
{
    ValueField field;
    field.setValue("caf\xE9\n");
    typeText(field, "s");
    ASSERT_EQ(field.value(), "caf\xEF\xBF\xBD s");

    field.undo();

    EXPECT_EQ(field.value(), "caf\xE9\n");
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
