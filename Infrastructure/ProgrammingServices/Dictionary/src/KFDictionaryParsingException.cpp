#include "KFDictionaryParsingException.h"

#include "CallMarker.h"

KFDictionaryParsingException::KFDictionaryParsingException(
    const std::string& description, const std::string& fileName, int line)
    : KFDictionaryException(description, fileName, line)
{
    CallMarker marker(
        "KFDictionaryParsingException", "KFDictionaryParsingException::constructor", true, this);
}

KFDictionaryParsingException::KFDictionaryParsingException(
    const KFDictionaryParsingException& other)
    : KFDictionaryException(other)
{
    CallMarker marker(
        "KFDictionaryParsingException", "KFDictionaryParsingException::constructor", true, this);
}

KFDictionaryParsingException::~KFDictionaryParsingException()
{
    CallMarker marker(
        "KFDictionaryParsingException", "KFDictionaryParsingException::destructor", false, this);
}
