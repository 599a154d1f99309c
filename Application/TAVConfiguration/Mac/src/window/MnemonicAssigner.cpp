#include "MnemonicAssigner.h"

#include "CallMarker.h"

#include <array>

namespace {

bool isOnLatinKeyboard(const QString& text, qsizetype index)
{
    return text[index].isLetterOrNumber() && text[index].unicode() < 0x80;
}

bool isInitial(const QString& text, qsizetype index)
{
    return isOnLatinKeyboard(text, index) && (index == 0 || !text[index - 1].isLetterOrNumber());
}

bool isLetterOrNumber(const QString& text, qsizetype index)
{
    return text[index].isLetterOrNumber();
}

} // namespace

MnemonicAssigner::MnemonicAssigner()
{
    CallMarker marker("MnemonicAssigner", "MnemonicAssigner::constructor", true, this);
}

MnemonicAssigner::~MnemonicAssigner()
{
    CallMarker marker("MnemonicAssigner", "MnemonicAssigner::destructor", false, this);
}

QString MnemonicAssigner::assign(const QString& text)
{
    CallMarker marker("MnemonicAssigner::assign", this);
    const qsizetype letter = freeLetter(text);
    if (letter == -1)
        return literal(text);
    m_taken.insert(text[letter].toUpper());
    return literal(text.first(letter)) + u'&' + literal(text.sliced(letter));
}

QString MnemonicAssigner::literal(const QString& text)
{
    CallMarker marker("MnemonicAssigner::literal");
    return QString(text).replace(u'&', QStringLiteral("&&"));
}

qsizetype MnemonicAssigner::freeLetter(const QString& text) const
{
    CallMarker marker("MnemonicAssigner::freeLetter", this);
    for (const auto suits : {isInitial, isOnLatinKeyboard, isLetterOrNumber})
        for (qsizetype i = 0; i < text.size(); ++i)
            if (suits(text, i) && !m_taken.contains(text[i].toUpper()))
                return i;
    return -1;
}
