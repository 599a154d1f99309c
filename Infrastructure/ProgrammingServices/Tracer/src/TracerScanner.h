#pragma once

#include "ConfigScanner.h"

#include <string>

/// The keywords of the tracer's configuration file.
class TracerScanner : public ConfigScanner {
public:
    enum Command {
        TraceOn,
        TraceOff,
        TraceIndentWithMark,
        TraceFullIndent,
        TraceCallExit,
        TraceClock,
        TraceObjectCount,
        TraceMustFlush,
        TraceTheThread,
        TraceTheCall,
        TraceSetFileName,
        TraceSetMaxLines,
        TraceSetMaxFiles,
        TraceSetMsgFilter,
        TraceSetBufferFormat, ///< three keywords, accepted without effect
    };

    /// Takes the file's bytes.
    explicit TracerScanner(std::string content);
};
