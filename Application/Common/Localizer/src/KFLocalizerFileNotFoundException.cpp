#include "KFLocalizerFileNotFoundException.h"

#include "CallMarker.h"

KFLocalizerFileNotFoundException::KFLocalizerFileNotFoundException(
    const std::string& fileName, int line)
    : KFLocalizerException("LOCALIZATION_FILE_NOT_FOUND", fileName, line)
{
    CallMarker marker(
        "KFLocalizerFileNotFoundException", "KFLocalizerFileNotFoundException::constructor", true,
        this);
}

KFLocalizerFileNotFoundException::KFLocalizerFileNotFoundException(
    const KFLocalizerFileNotFoundException& other)
    : KFLocalizerException(other)
{
    CallMarker marker(
        "KFLocalizerFileNotFoundException", "KFLocalizerFileNotFoundException::constructor", true,
        this);
}

KFLocalizerFileNotFoundException::~KFLocalizerFileNotFoundException()
{
    CallMarker marker(
        "KFLocalizerFileNotFoundException", "KFLocalizerFileNotFoundException::destructor", false,
        this);
}
