#include "KFLocalizerAlreadyInitializedException.h"

#include "CallMarker.h"

KFLocalizerAlreadyInitializedException::KFLocalizerAlreadyInitializedException(
    const std::string& fileName, int line)
    : KFLocalizerException("LOCALIZER_ALREADY_INITIALIZED", fileName, line)
{
    CallMarker marker(
        "KFLocalizerAlreadyInitializedException",
        "KFLocalizerAlreadyInitializedException::constructor", true, this);
}

KFLocalizerAlreadyInitializedException::KFLocalizerAlreadyInitializedException(
    const KFLocalizerAlreadyInitializedException& other)
    : KFLocalizerException(other)
{
    CallMarker marker(
        "KFLocalizerAlreadyInitializedException",
        "KFLocalizerAlreadyInitializedException::constructor", true, this);
}

KFLocalizerAlreadyInitializedException::~KFLocalizerAlreadyInitializedException()
{
    CallMarker marker(
        "KFLocalizerAlreadyInitializedException",
        "KFLocalizerAlreadyInitializedException::destructor", false, this);
}
