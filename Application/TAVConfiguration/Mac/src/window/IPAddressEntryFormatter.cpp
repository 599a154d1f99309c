#include "IPAddressEntryFormatter.h"

#include "CallMarker.h"

#include <algorithm>

namespace {

bool mayStandInAddress(char32_t character)
{
    return character == U'.' || QChar::category(character) == QChar::Number_DecimalDigit;
}

} // namespace

IPAddressEntryFormatter::IPAddressEntryFormatter(QObject* parent) : QValidator(parent)
{
    CallMarker marker(
        "IPAddressEntryFormatter", "IPAddressEntryFormatter::constructor", true, this);
}

IPAddressEntryFormatter::~IPAddressEntryFormatter()
{
    CallMarker marker(
        "IPAddressEntryFormatter", "IPAddressEntryFormatter::destructor", false, this);
}

std::string IPAddressEntryFormatter::stringForObjectValue(const std::string& value) const
{
    CallMarker marker("IPAddressEntryFormatter::stringForObjectValue", this);
    return value;
}

bool IPAddressEntryFormatter::getObjectValue(std::string& value, const std::string& text) const
{
    CallMarker marker("IPAddressEntryFormatter::getObjectValue", this);
    value = text;
    return true;
}

std::optional<QString> IPAddressEntryFormatter::attributedStringForObjectValue(
    const std::string& /*value*/) const
{
    CallMarker marker("IPAddressEntryFormatter::attributedStringForObjectValue", this);
    return std::nullopt;
}

bool IPAddressEntryFormatter::isPartialStringValid(
    const QString& text, QString& errorDescription) const
{
    CallMarker marker("IPAddressEntryFormatter::isPartialStringValid", this);
    const auto characters = text.toUcs4();
    if (std::all_of(characters.begin(), characters.end(), mayStandInAddress))
        return true;
    errorDescription = QStringLiteral("NOT_DECIMAL_CHAR");
    return false;
}

QValidator::State IPAddressEntryFormatter::validate(QString& text, int& /*cursor*/) const
{
    CallMarker marker("IPAddressEntryFormatter::validate", this);
    QString errorDescription;
    return isPartialStringValid(text, errorDescription) ? Acceptable : Invalid;
}
