#include "IDCardReader.h"

#include "CallMarker.h"
#include "SafeFile.h"
#include "TextLine.h"

#include <algorithm>
#include <cstddef>
#include <exception>
#include <optional>
#include <utility>

namespace {

// Far above any card; what holds more is none.
constexpr std::size_t LONGEST_CARD = std::size_t{16} * 1024 * 1024;

} // namespace

IDCardReader::IDCardReader(std::string directory) : m_directory(std::move(directory))
{
    CallMarker marker("IDCardReader", "IDCardReader::constructor", true, this);
}

IDCardReader::~IDCardReader()
{
    CallMarker marker("IDCardReader", "IDCardReader::destructor", false, this);
}

bool IDCardReader::readIDCard()
try {
    CallMarker marker("bool IDCardReader::readIDCard()", this);
    const std::optional<std::string> card =
        SafeFile::read(m_directory + "ID.txt", SafeFile::Links::follow, LONGEST_CARD);
    if (!card)
        return false;

    bool hasEntry = false;
    for (std::string_view rest = *card; !rest.empty();) {
        const std::string_view line = takeLine(rest);
        if (line.find('&') != std::string_view::npos)
            return false;
        if (storeEntry(line))
            hasEntry = true;
    }
    return hasEntry;
} catch (const std::exception&) {
    return false; // no memory for an entry
}

// The value ends at its first character that is not printable, whatever the locale: the carriage
// return of a foreign line end is cut off, a text beyond ASCII ends before its first such byte.
// Kept: blanks around the "=" belong to key and value, and a line without one is both.
bool IDCardReader::storeEntry(std::string_view line)
{
    CallMarker marker("IDCardReader::storeEntry", this);
    const std::size_t sign = line.find('=');
    const std::string_view key = line.substr(0, sign);
    const std::string_view value = sign == std::string_view::npos ? line : line.substr(sign + 1);
    if (key.empty())
        return false;
    const auto isPrintable = [](char character) { return character >= ' ' && character <= '~'; };
    const auto end = std::find_if_not(value.begin(), value.end(), isPrintable);
    m_parameters.insert_or_assign(std::string(key), std::string(value.begin(), end));
    return true;
}

std::string IDCardReader::getParam(const std::string& key) const
try {
    CallMarker marker("IDCardReader::getParam", this);
    const auto entry = m_parameters.find(key);
    return entry != m_parameters.end() ? entry->second : std::string();
} catch (const std::exception&) {
    return {};
}

std::map<std::string, std::string> IDCardReader::getIDCardParams() const
try {
    CallMarker marker("IDCardReader::getIDCardParams", this);
    return m_parameters;
} catch (const std::exception&) {
    return {};
}

std::string IDCardReader::getKnownParam(const char* key) const
try {
    return getParam(key);
} catch (const std::exception&) {
    return {};
}

std::string IDCardReader::getFleetID() const
{
    CallMarker marker("IDCardReader::getFleetID", this);
    return getKnownParam("FLEET_ID");
}

std::string IDCardReader::getCustomerID() const
{
    CallMarker marker("IDCardReader::getCustomerID", this);
    return getKnownParam("CUSTOMER_ID");
}

std::string IDCardReader::getGenerationVersion() const
{
    CallMarker marker("IDCardReader::getGenerationVersion", this);
    return getKnownParam("GENERATION_VERSION");
}

std::string IDCardReader::getTAVAdministrationTool() const
{
    CallMarker marker("IDCardReader::getTAVAdministrationTool", this);
    return getKnownParam("IT_MANAGER");
}

std::string IDCardReader::getBUName() const
{
    CallMarker marker("IDCardReader::getBUName", this);
    return getKnownParam("BU_NAME");
}

std::string IDCardReader::getReferenceVersion() const
{
    CallMarker marker("IDCardReader::getReferenceVersion", this);
    return getKnownParam("REFERENCE_VERSION");
}

std::string IDCardReader::getProductName() const
{
    CallMarker marker("IDCardReader::getProductName", this);
    return getKnownParam("PRODUCT_NAME");
}

std::string IDCardReader::getBuildTarget() const
{
    CallMarker marker("IDCardReader::getBuildTarget", this);
    return getKnownParam("BUILD_TARGET");
}

std::string IDCardReader::getCommercialVersion() const
{
    CallMarker marker("IDCardReader::getCommercialVersion", this);
    return getKnownParam("COMMERCIAL_VERSION");
}

std::string IDCardReader::getProductVersion() const
{
    CallMarker marker("IDCardReader::getProductVersion", this);
    return getKnownParam("PRODUCT_VERSION");
}

std::string IDCardReader::getUpgradeCode() const
{
    CallMarker marker("IDCardReader::getUpgradeCode", this);
    return getKnownParam("UPGRADE_CODE");
}
