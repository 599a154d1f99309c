#include "TracerParser.h"

#include "Tracer.h"

TracerParser::TracerParser(TracerScanner& scanner) : ConfigParser(scanner, "tracer") {}

void TracerParser::apply(const Statement& statement)
{
    Tracer* const tracer = Tracer::GetInstance();
    if (tracer == nullptr)
        return;
    const auto command = static_cast<TracerScanner::Command>(statement.command);
    const bool switches = command == TracerScanner::TraceOn || command == TracerScanner::TraceOff;
    if (switches || tracer->isActive())
        apply(*tracer, command, statement);
}

void TracerParser::apply(Tracer& tracer, TracerScanner::Command command, const Statement& statement)
{
    switch (command) {
    case TracerScanner::TraceOn:
        tracer.setActive(true);
        break;
    case TracerScanner::TraceOff:
        tracer.setActive(false);
        break;
    case TracerScanner::TraceIndentWithMark:
        tracer.setTreeIndent(true);
        break;
    case TracerScanner::TraceFullIndent:
        tracer.setIndentHidden(true);
        break;
    case TracerScanner::TraceCallExit:
        tracer.setPrintExit(true);
        break;
    case TracerScanner::TraceClock:
        tracer.setPrintTime(true);
        break;
    case TracerScanner::TraceObjectCount:
        tracer.setPrintObjects(true);
        break;
    case TracerScanner::TraceMustFlush:
        tracer.setSynchronous(true);
        break;
    case TracerScanner::TraceTheThread:
        tracer.TraceTheThread(statement.name.c_str());
        break;
    case TracerScanner::TraceTheCall:
        tracer.TraceTheCall(statement.name.c_str());
        break;
    case TracerScanner::TraceSetFileName:
        tracer.SetFileName(statement.name);
        break;
    case TracerScanner::TraceSetMaxLines:
        tracer.setMaxLinesPerFile(statement.number);
        break;
    case TracerScanner::TraceSetMaxFiles:
        tracer.setMaxFiles(statement.number);
        break;
    case TracerScanner::TraceSetMsgFilter:
        tracer.setMsgTypeMask(tracer.getMsgTypeMask() | statement.mask);
        break;
    case TracerScanner::TraceSetBufferFormat:
        break;
    }
}
