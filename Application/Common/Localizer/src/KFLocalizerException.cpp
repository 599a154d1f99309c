#include "KFLocalizerException.h"

#include "CallMarker.h"

KFLocalizerException::KFLocalizerException(
    const std::string& name, const std::string& fileName, int line)
    : KFException(name, fileName, line)
{
    CallMarker marker("KFLocalizerException", "KFLocalizerException::constructor", true, this);
}

KFLocalizerException::KFLocalizerException(const KFLocalizerException& other) : KFException(other)
{
    CallMarker marker("KFLocalizerException", "KFLocalizerException::constructor", true, this);
}

KFLocalizerException::~KFLocalizerException()
{
    CallMarker marker("KFLocalizerException", "KFLocalizerException::destructor", false, this);
}

std::string KFLocalizerException::toString() const
{
    CallMarker marker("KFLocalizerException::toString", this);
    return std::string("Localizer Exception : ") + what() + " on file " + getFileName() +
           " at line " + std::to_string(getLine());
}
