#pragma once

#include <QLineEdit>

#include <string>

/// A text field for a stored value, of any length.
///
/// A value that nobody edits is yielded byte for byte, also where it is not UTF-8 or holds
/// characters that a single line cannot show. In an edited one the line breaks and NULs, which the
/// configuration file could not keep, are yielded as they show: as blanks.
///
/// A text that the validator refuses does not stay, however it came in: the one before it is put
/// back. The value that was set may show nevertheless.
class ValueField : public QLineEdit {
    Q_OBJECT

public:
    explicit ValueField(QWidget* parent = nullptr);
    ~ValueField() override;

    void setValue(const std::string& value);
    std::string value() const;

private:
    void admit(const QString& text);
    void showUnchecked(const QString& text);

    std::string m_loadedValue;
    QString m_loadedText;
    QString m_admittedText;
};
