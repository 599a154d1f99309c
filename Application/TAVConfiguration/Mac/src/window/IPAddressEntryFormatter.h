#pragma once

#include <QString>
#include <QValidator>

#include <optional>
#include <string>

/// Restricts the address field to decimal digits of any script and full stops, as text is typed or
/// pasted. Length, number of full stops and size of the numbers are free.
class IPAddressEntryFormatter : public QValidator {
    Q_OBJECT

public:
    explicit IPAddressEntryFormatter(QObject* parent = nullptr);
    ~IPAddressEntryFormatter() override;

    /// The text that shows a value: the value itself, whatever it is.
    std::string stringForObjectValue(const std::string& value) const;

    /// Takes the text, unchanged, as the value; refuses none.
    bool getObjectValue(std::string& value, const std::string& text) const;

    /// No value has a text with attributes.
    std::optional<QString> attributedStringForObjectValue(const std::string& value) const;

    /// Whether the field may take on the text. A refusal sets the error description to the plain
    /// text "NOT_DECIMAL_CHAR".
    bool isPartialStringValid(const QString& text, QString& errorDescription) const;

    /// The question of the text field: Acceptable or Invalid, nothing between.
    State validate(QString& text, int& cursor) const override;
};
