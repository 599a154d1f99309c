#pragma once

#include <QValidator>

/// Turns the line breaks and NULs of a text that is typed or pasted into blanks, one each: a single
/// line shows them so, and the configuration file keeps a value in one line and up to a NUL.
class SingleLineFormatter : public QValidator {
    Q_OBJECT

public:
    explicit SingleLineFormatter(QObject* parent = nullptr);
    ~SingleLineFormatter() override;

    State validate(QString& text, int& cursor) const override;
};
