#pragma once

#include <QSet>
#include <QString>

/// Gives the controls of one window keyboard mnemonics, each letter once, whatever the language.
///
/// The first controls to ask get their letters first: the initial of a word where one is free, else
/// the first free letter or digit, those of the Latin keyboard before others. A text without a free
/// one gets none.
class MnemonicAssigner {
public:
    MnemonicAssigner();
    ~MnemonicAssigner();

    /// The text as a control takes it: shown to the letter, its mnemonic marked.
    QString assign(const QString& text);

    /// The text as a control takes it that has a mnemonic marked by "&": shown to the letter.
    static QString literal(const QString& text);

private:
    qsizetype freeLetter(const QString& text) const;

    QSet<QChar> m_taken;
};
