#include "TracerParser.h"

#include "Tracer.h"

#include <array>

namespace {

using namespace ConfigArgument;

constexpr std::string_view ON = "TRACE_ON";
constexpr std::string_view OFF = "TRACE_OFF";

void ignore(Tracer& /*tracer*/, None /*argument*/) {}

constexpr auto COMMANDS = std::to_array<TracerParser::Command>({
    {ON, [](Tracer& tracer, None) { tracer.setActive(true); }},
    {OFF, [](Tracer& tracer, None) { tracer.setActive(false); }},
    {"TRACE_INDENT_WITH_MARK", [](Tracer& tracer, None) { tracer.setTreeIndent(true); }},
    {"TRACE_FULL_INDENT", [](Tracer& tracer, None) { tracer.setIndentHidden(true); }},
    {"TRACE_CALL_EXIT", [](Tracer& tracer, None) { tracer.setPrintExit(true); }},
    {"TRACE_CLOCK", [](Tracer& tracer, None) { tracer.setPrintTime(true); }},
    {"TRACE_OBJECT_COUNT", [](Tracer& tracer, None) { tracer.setPrintObjects(true); }},
    {"TRACE_MUST_FLUSH", [](Tracer& tracer, None) { tracer.setSynchronous(true); }},
    {"TRACE_THE_THREAD", [](Tracer& tracer, Name name) { tracer.TraceTheThread(name.c_str()); }},
    {"TRACE_THE_CALL", [](Tracer& tracer, Name name) { tracer.TraceTheCall(name.c_str()); }},
    {"TRACE_SET_FILE_NAME", [](Tracer& tracer, Name name) { tracer.SetFileName(name); }},
    {"TRACE_SET_MAX_LINES", [](Tracer& tracer, Number lines) { tracer.setMaxLinesPerFile(lines); }},
    {"TRACE_SET_MAX_FILES", [](Tracer& tracer, Number files) { tracer.setMaxFiles(files); }},
    {"TRACE_SET_MSG_FILTER", [](Tracer& tracer, Mask types) { tracer.addMsgTypes(types); }},
    {"TRACE_SET_BUFFER_FORMAT_HEX", ignore},
    {"TRACE_SET_BUFFER_FORMAT_DEC", ignore},
    {"TRACE_SET_BUFFER_FORMAT_CHR", ignore},
});

} // namespace

TracerParser::TracerParser(TracerScanner& scanner) : ConfigParser(scanner, "tracer", COMMANDS) {}

bool TracerParser::acts(const Command& command, Tracer& tracer) const
{
    return command.word == ON || command.word == OFF || tracer.isActive();
}
