#pragma once

#include "TraceMsgType.h"

#include <sstream>

class CallMarker;

/// A trace message built with stream insertions:
///
///     TraceStream(TraceMsgType::D, marker) << "key " << number;
///
/// Its destructor writes the text inside the call of the marker, which it must not outlive, under
/// the conditions of any message.
class TraceStream : public std::ostringstream {
public:
    TraceStream(TraceMsgType type, CallMarker& marker);
    ~TraceStream() override;

private:
    TraceMsgType m_type;
    CallMarker& m_marker;
};
