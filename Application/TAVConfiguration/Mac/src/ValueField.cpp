#include "ValueField.h"

#include "CallMarker.h"
#include "SingleLineFormatter.h"

#include <limits>

ValueField::ValueField(QWidget* parent) : QLineEdit(parent)
{
    CallMarker marker("ValueField", "ValueField::constructor", true, this);
    setMaxLength(std::numeric_limits<int>::max());
    setValidator(new SingleLineFormatter(this));
    connect(this, &QLineEdit::textEdited, this, &ValueField::keepChecking);
}

ValueField::~ValueField()
{
    CallMarker marker("ValueField", "ValueField::destructor", false, this);
}

void ValueField::setValue(const std::string& value)
{
    CallMarker marker("ValueField::setValue", this);
    m_loadedValue = value;
    m_loadedText = QString::fromStdString(value);
    showUnchecked(m_loadedText);
}

std::string ValueField::value() const
{
    CallMarker marker("ValueField::value", this);
    return text() == m_loadedText ? m_loadedValue : text().toStdString();
}

// The base class lets every edit pass once the text before it was one that the validator refuses.
// So such a text is put in while there is no validator to refuse it.
void ValueField::showUnchecked(const QString& text)
{
    CallMarker marker("ValueField::showUnchecked", this);
    const QValidator* const checker = validator();
    setValidator(nullptr);
    clear();
    setText(text);
    setValidator(checker);
}

// Undo may bring back a loaded value that the validator refuses.
void ValueField::keepChecking()
{
    CallMarker marker("ValueField::keepChecking", this);
    if (hasAcceptableInput())
        return;
    const int cursor = cursorPosition();
    showUnchecked(text());
    setCursorPosition(cursor);
}
