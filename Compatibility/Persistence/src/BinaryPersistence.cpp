#include "BinaryPersistence.h"

#include "CallMarker.h"

BinaryPersistence::BinaryPersistence()
{
    CallMarker marker("BinaryPersistence", "BinaryPersistence::constructor", true, this);
}

BinaryPersistence::~BinaryPersistence()
{
    CallMarker marker("BinaryPersistence", "BinaryPersistence::destructor", false, this);
}
