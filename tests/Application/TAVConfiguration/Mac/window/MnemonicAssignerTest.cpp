#include "MnemonicAssigner.h"

#include <gtest/gtest.h>

TEST(MnemonicAssigner, TakesTheFirstInitialThatIsFree)
{
    MnemonicAssigner mnemonics;

    EXPECT_EQ(mnemonics.assign("Save"), "&Save");
    EXPECT_EQ(mnemonics.assign("Start a VPN"), "Start &a VPN");
    EXPECT_EQ(mnemonics.assign("Stop a VPN"), "Stop a &VPN");
}

TEST(MnemonicAssigner, TakesALetterInsideWhenNoInitialIsFree)
{
    MnemonicAssigner mnemonics;
    mnemonics.assign("Browse");

    EXPECT_EQ(mnemonics.assign("Browse"), "B&rowse");
}

TEST(MnemonicAssigner, CountsUpperAndLowerCaseAsOneLetter)
{
    MnemonicAssigner mnemonics;
    mnemonics.assign("a");

    EXPECT_EQ(mnemonics.assign("Ab"), "A&b");
}

TEST(MnemonicAssigner, PrefersLettersOfTheLatinKeyboard)
{
    EXPECT_EQ(MnemonicAssigner().assign(QStringLiteral("\u00C9tat")), QStringLiteral("\u00C9&tat"));
}

TEST(MnemonicAssigner, TakesALetterOfAnotherScriptWhereThereIsNoOther)
{
    EXPECT_EQ(
        MnemonicAssigner().assign(QStringLiteral("\u0424\u0430\u0439\u043B")),
        QStringLiteral("&\u0424\u0430\u0439\u043B"));
}

TEST(MnemonicAssigner, TakesADigitToo)
{
    EXPECT_EQ(MnemonicAssigner().assign("(4)"), "(&4)");
}

TEST(MnemonicAssigner, AssignsNoneWhereNoLetterIsFree)
{
    MnemonicAssigner mnemonics;
    mnemonics.assign("a");

    EXPECT_EQ(mnemonics.assign("A…"), "A…");
    EXPECT_EQ(mnemonics.assign(""), "");
}

TEST(MnemonicAssigner, ShowsAmpersandsToTheLetter)
{
    EXPECT_EQ(MnemonicAssigner().assign("&& A&B"), "&&&& &A&&B");
    EXPECT_EQ(MnemonicAssigner().assign("&"), "&&");
    EXPECT_EQ(MnemonicAssigner::literal("R&D && more"), "R&&D &&&& more");
}
