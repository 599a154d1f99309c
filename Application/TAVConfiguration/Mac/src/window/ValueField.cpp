#include "ValueField.h"

#include "CallMarker.h"

#include <algorithm>
#include <limits>

ValueField::ValueField(QWidget* parent) : QLineEdit(parent)
{
    CallMarker marker("ValueField", "ValueField::constructor", true, this);
    setMaxLength(std::numeric_limits<int>::max());
    connect(this, &QLineEdit::textChanged, this, &ValueField::admit);
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
    if (text() == m_loadedText)
        return m_loadedValue;
    QString line = text();
    const auto cannotBeKept = [](QChar c) { return c == u'\n' || c == u'\r' || c == u'\0'; };
    std::replace_if(line.begin(), line.end(), cannotBeKept, QChar(u' '));
    return line.toStdString();
}

// The base class asks the validator about the edits of keyboard and mouse. What assistive
// technology does, and undo, and what follows a text that was not asked about, it lets pass.
void ValueField::admit(const QString& text)
{
    CallMarker marker("ValueField::admit", this);
    if (text == m_loadedText || hasAcceptableInput()) {
        m_admittedText = text;
        return;
    }
    const qsizetype behindCursor = text.size() - cursorPosition();
    showUnchecked(m_admittedText);
    setCursorPosition(int(m_admittedText.size() - behindCursor));
}

// Put in while there is no validator to refuse it, so that the base class refuses the edits that
// follow, each without a trace.
void ValueField::showUnchecked(const QString& text)
{
    CallMarker marker("ValueField::showUnchecked", this);
    const QValidator* const checker = validator();
    setValidator(nullptr);
    setText(text);
    setValidator(checker);
}
