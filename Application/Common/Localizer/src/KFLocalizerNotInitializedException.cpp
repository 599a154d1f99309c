#include "KFLocalizerNotInitializedException.h"

#include "CallMarker.h"

KFLocalizerNotInitializedException::KFLocalizerNotInitializedException(
    const std::string& fileName, int line)
    : KFLocalizerException("LOCALIZER_NOT_INITIALIZED", fileName, line)
{
    CallMarker marker(
        "KFLocalizerNotInitializedException", "KFLocalizerNotInitializedException::constructor",
        true, this);
}

KFLocalizerNotInitializedException::KFLocalizerNotInitializedException(
    const KFLocalizerNotInitializedException& other)
    : KFLocalizerException(other)
{
    CallMarker marker(
        "KFLocalizerNotInitializedException", "KFLocalizerNotInitializedException::constructor",
        true, this);
}

KFLocalizerNotInitializedException::~KFLocalizerNotInitializedException()
{
    CallMarker marker(
        "KFLocalizerNotInitializedException", "KFLocalizerNotInitializedException::destructor",
        false, this);
}
