#include "KFLocalizerFileNotCorrectlyFormattedException.h"

#include "CallMarker.h"

KFLocalizerFileNotCorrectlyFormattedException::KFLocalizerFileNotCorrectlyFormattedException(
    const std::string& fileName, int line)
    : KFLocalizerException("FILE_NOT_CORRECTLY_FORMATTED", fileName, line)
{
    CallMarker marker(
        "KFLocalizerFileNotCorrectlyFormattedException",
        "KFLocalizerFileNotCorrectlyFormattedException::constructor", true, this);
}

KFLocalizerFileNotCorrectlyFormattedException::KFLocalizerFileNotCorrectlyFormattedException(
    const KFLocalizerFileNotCorrectlyFormattedException& other)
    : KFLocalizerException(other)
{
    CallMarker marker(
        "KFLocalizerFileNotCorrectlyFormattedException",
        "KFLocalizerFileNotCorrectlyFormattedException::constructor", true, this);
}

KFLocalizerFileNotCorrectlyFormattedException::~KFLocalizerFileNotCorrectlyFormattedException()
{
    CallMarker marker(
        "KFLocalizerFileNotCorrectlyFormattedException",
        "KFLocalizerFileNotCorrectlyFormattedException::destructor", false, this);
}
