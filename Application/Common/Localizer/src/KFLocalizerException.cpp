#include "KFLocalizerException.h"

#include "CallMarker.h"

KFLocalizerException::KFLocalizerException(
    const std::string& name, const std::string& fileName, int line)
    : KFException(name, fileName, line)
{
}

std::string KFLocalizerException::toString() const
{
    const CallMarker marker("KFLocalizerException::toString", this);
    return std::string("Localizer Exception : ") + what() + " on file " + getFileName() +
           " at line " + std::to_string(getLine());
}
