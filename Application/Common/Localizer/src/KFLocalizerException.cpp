#include "KFLocalizerException.h"

std::string KFLocalizerException::toString() const
{
    CallMarker marker("KFLocalizerException::toString", this);
    return report("Localizer Exception", "at line");
}
