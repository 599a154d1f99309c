#include "PropertyListFile.h"

#include "CallMarker.h"
#include "Dictionary.h"
#include "KFDictionaryFileException.h"
#include "KFDictionaryParsingException.h"
#include "Logger.h"
#include "SafeFile.h"

#include <algorithm>
#include <exception>
#include <optional>
#include <sstream>
#include <utility>

namespace {

// The unit that reports name: the operations are those of the dictionary.
constexpr const char* UNIT = "Infrastructure/ProgrammingServices/Dictionary/src/Dictionary";

constexpr const char* FILE_BEGIN = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                                   "<plist version=\"1.0\">\n";
// Kept: no line end follows
constexpr const char* FILE_END = "</plist>";

bool nextLineHas(const char* tag, std::stringstream& in)
{
    std::string line;
    std::getline(in, line);
    return line.find(tag) != std::string::npos;
}

} // namespace

PropertyListFile::PropertyListFile(const CallMarker& marker, std::string path)
    : m_marker(marker), m_path(std::move(path))
{
}

void PropertyListFile::load(Dictionary& dictionary) const
{
    std::stringstream in(read());
    if (!nextLineHas("<?xml", in)) {
        TAV_TRACE(m_marker, TraceMsgType::E, "No XML header found");
        throw KFDictionaryParsingException("No XML header found", UNIT, 876);
    }
    if (!nextLineHas("<plist version=\"1.0\"", in)) {
        TAV_TRACE(m_marker, TraceMsgType::E, "Incorrect plist or bad version");
        throw KFDictionaryParsingException("Incorrect plist or bad version", UNIT, 870);
    }
    dictionary.unMarshall(in);
}

std::string PropertyListFile::read() const
{
    std::optional<std::string> text = SafeFile::read(m_path);
    if (!text) {
        TAV_TRACE(m_marker, TraceMsgType::E, "Can't open file %s", m_path.c_str());
        throw KFDictionaryFileException("Can't open file", UNIT, 882);
    }
    // Kept: a zero byte ends the text
    text->resize(std::min(text->size(), text->find('\0')));
    return *std::move(text);
}

void PropertyListFile::save(Dictionary& dictionary) const
{
    const std::string failure = replaceBy(dictionary);
    if (!failure.empty())
        TAV_LOG(
            LoggerMsgType::ERROR, "Saving the dictionary to %s failed: %s", m_path.c_str(),
            failure.c_str());
}

std::string PropertyListFile::replaceBy(Dictionary& dictionary) const
{
    try {
        const std::string text = FILE_BEGIN + dictionary.marshall("") + FILE_END;
        return SafeFile::replace(m_path, text, SafeFile::Backup::keep);
    } catch (const std::exception& error) {
        return error.what();
    }
}
