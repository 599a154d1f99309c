#include "StringPersistence.h"

#include "CallMarker.h"

StringPersistence::StringPersistence()
{
    CallMarker marker("StringPersistence", "StringPersistence::constructor", true, this);
}

StringPersistence::~StringPersistence()
{
    CallMarker marker("StringPersistence", "StringPersistence::destructor", false, this);
}
