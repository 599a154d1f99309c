#pragma once

#include "ValueField.h"

#include <QAccessible>
#include <QApplication>
#include <QClipboard>
#include <QDropEvent>
#include <QInputMethodEvent>
#include <QMimeData>

#include <ostream>
#include <vector>

/// One way by which a whole text gets into a field, at its end.
struct EditingWay {
    const char* name;
    void (*append)(ValueField& field, const QString& text);

    friend void PrintTo(const EditingWay& way, std::ostream* out) { *out << way.name; }
};

/// What assistive technology edits a field by.
inline QAccessibleEditableTextInterface& accessibleText(ValueField& field)
{
    return *QAccessible::queryAccessibleInterface(&field)->editableTextInterface();
}

/// All but typing, which takes a character at a time.
inline std::vector<EditingWay> editingWays()
{
    return {
        {"Pasted",
         [](ValueField& field, const QString& text) {
             QApplication::clipboard()->setText(text);
             field.paste();
         }},
        {"Dropped",
         [](ValueField& field, const QString& text) {
             QMimeData data;
             data.setText(text);
             const QPoint end = field.rect().topRight();
             QDragEnterEvent enter(end, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
             QApplication::sendEvent(&field, &enter);
             QDropEvent drop(end, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
             QApplication::sendEvent(&field, &drop);
         }},
        {"FromAnInputMethod",
         [](ValueField& field, const QString& text) {
             QInputMethodEvent event;
             event.setCommitString(text);
             QApplication::sendEvent(&field, &event);
         }},
        {"InsertedThroughAccessibility",
         [](ValueField& field, const QString& text) {
             accessibleText(field).insertText(int(field.text().size()), text);
         }},
        {"SetThroughAccessibility", [](ValueField& field, const QString& text) {
             const QString former = field.text();
             accessibleText(field).replaceText(0, int(former.size()), former + text);
         }}};
}
