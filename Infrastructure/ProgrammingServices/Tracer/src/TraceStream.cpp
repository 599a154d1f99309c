#include "TraceStream.h"

#include "CallMarker.h"

TraceStream::TraceStream(TraceMsgType type, CallMarker& marker) : m_type(type), m_marker(marker) {}

TraceStream::~TraceStream()
{
    TAV_TRACE(m_marker, m_type, "%s", str().c_str());
}
