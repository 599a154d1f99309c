#include "TracerScanner.h"

#include <array>
#include <utility>

namespace {

using Argument = ConfigScanner::Argument;
using Keyword = ConfigScanner::Keyword;

constexpr std::array keywords{
    Keyword{"TRACE_ON", TracerScanner::TraceOn, Argument::none},
    Keyword{"TRACE_OFF", TracerScanner::TraceOff, Argument::none},
    Keyword{"TRACE_INDENT_WITH_MARK", TracerScanner::TraceIndentWithMark, Argument::none},
    Keyword{"TRACE_FULL_INDENT", TracerScanner::TraceFullIndent, Argument::none},
    Keyword{"TRACE_CALL_EXIT", TracerScanner::TraceCallExit, Argument::none},
    Keyword{"TRACE_CLOCK", TracerScanner::TraceClock, Argument::none},
    Keyword{"TRACE_OBJECT_COUNT", TracerScanner::TraceObjectCount, Argument::none},
    Keyword{"TRACE_MUST_FLUSH", TracerScanner::TraceMustFlush, Argument::none},
    Keyword{"TRACE_THE_THREAD", TracerScanner::TraceTheThread, Argument::name},
    Keyword{"TRACE_THE_CALL", TracerScanner::TraceTheCall, Argument::name},
    Keyword{"TRACE_SET_FILE_NAME", TracerScanner::TraceSetFileName, Argument::name},
    Keyword{"TRACE_SET_MAX_LINES", TracerScanner::TraceSetMaxLines, Argument::number},
    Keyword{"TRACE_SET_MAX_FILES", TracerScanner::TraceSetMaxFiles, Argument::number},
    Keyword{"TRACE_SET_MSG_FILTER", TracerScanner::TraceSetMsgFilter, Argument::levelWords},
    Keyword{"TRACE_SET_BUFFER_FORMAT_HEX", TracerScanner::TraceSetBufferFormat, Argument::none},
    Keyword{"TRACE_SET_BUFFER_FORMAT_DEC", TracerScanner::TraceSetBufferFormat, Argument::none},
    Keyword{"TRACE_SET_BUFFER_FORMAT_CHR", TracerScanner::TraceSetBufferFormat, Argument::none},
};

} // namespace

TracerScanner::TracerScanner(std::string content)
    : ConfigScanner(std::move(content), keywords, "TRACE_")
{
}
