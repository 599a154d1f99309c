#include "KFDictionaryException.h"

#include "CallMarker.h"

KFDictionaryException::KFDictionaryException(
    const std::string& description, const std::string& fileName, int line)
    : KFException(description, fileName, line)
{
    CallMarker marker("KFDictionaryException", "KFDictionaryException::constructor", true, this);
}

KFDictionaryException::KFDictionaryException(const KFDictionaryException& other)
    : KFException(other)
{
    CallMarker marker("KFDictionaryException", "KFDictionaryException::constructor", true, this);
}

KFDictionaryException::~KFDictionaryException()
{
    CallMarker marker("KFDictionaryException", "KFDictionaryException::destructor", false, this);
}
