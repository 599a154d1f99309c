#pragma once

#include <QLineEdit>

#include <string>

/// A text field for a stored value, of any length.
///
/// A value that nobody edits is yielded byte for byte, also where it is not UTF-8 or holds
/// characters that a single line cannot show. What is typed or pasted holds no line break and no
/// NUL, which the configuration file could not keep: they become blanks.
class ValueField : public QLineEdit {
    Q_OBJECT

public:
    explicit ValueField(QWidget* parent = nullptr);
    ~ValueField() override;

    /// Shows the value, also one that the validator would refuse; the validator then checks each
    /// edit of it nevertheless.
    void setValue(const std::string& value);
    std::string value() const;

private:
    void showUnchecked(const QString& text);
    void keepChecking();

    std::string m_loadedValue;
    QString m_loadedText;
};
