#pragma once

#include <QString>
#include <QTest>

/// Types a text of any script, a key for each character.
inline void typeText(QWidget& control, const QString& text)
{
    for (const QChar character : text)
        QTest::sendKeyEvent(
            QTest::Click, &control, Qt::Key_unknown, QString(character), Qt::NoModifier);
}
