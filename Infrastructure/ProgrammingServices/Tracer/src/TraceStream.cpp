#include "TraceStream.h"

#include "CallMarker.h"
#include "UnlessMemoryRunsOut.h"

TraceStream::TraceStream(TraceMsgType type, CallMarker& marker) : m_type(type), m_marker(marker) {}

TraceStream::~TraceStream()
{
    unlessMemoryRunsOut([this] { TAV_TRACE(m_marker, m_type, "%s", str().c_str()); });
}
