#include "KFDictionaryFileException.h"

#include "CallMarker.h"

KFDictionaryFileException::KFDictionaryFileException(
    const std::string& description, const std::string& fileName, int line)
    : KFDictionaryException(description, fileName, line)
{
    CallMarker marker(
        "KFDictionaryFileException", "KFDictionaryFileException::constructor", true, this);
}

KFDictionaryFileException::KFDictionaryFileException(const KFDictionaryFileException& other)
    : KFDictionaryException(other)
{
    CallMarker marker(
        "KFDictionaryFileException", "KFDictionaryFileException::constructor", true, this);
}

KFDictionaryFileException::~KFDictionaryFileException()
{
    CallMarker marker(
        "KFDictionaryFileException", "KFDictionaryFileException::destructor", false, this);
}
