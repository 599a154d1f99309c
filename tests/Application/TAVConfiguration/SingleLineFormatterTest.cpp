#include "SingleLineFormatter.h"

#include <gtest/gtest.h>

TEST(SingleLineFormatter, TurnsLineBreaksAndNulIntoBlanks)
{
    QString text = QStringLiteral("a\nb\r\nc") + QChar(u'\0') + u'd';
    int cursor = 0;

    EXPECT_EQ(SingleLineFormatter().validate(text, cursor), QValidator::Acceptable);
    EXPECT_EQ(text, "a b  c d");
}

TEST(SingleLineFormatter, LeavesEveryOtherTextAlone)
{
    const QString odd = QStringLiteral(" <b>&\t\"\u00E9\u2028\U0001F600 ");
    QString text = odd;
    int cursor = 0;

    EXPECT_EQ(SingleLineFormatter().validate(text, cursor), QValidator::Acceptable);
    EXPECT_EQ(text, odd);
}
