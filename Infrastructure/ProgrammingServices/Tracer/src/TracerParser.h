#pragma once

#include "ConfigParser.h"
#include "TracerScanner.h"

class Tracer;

/// Applies the commands of a tracer configuration file to the published tracer; without one they
/// are read and have no effect. All but the two that switch tracing are ignored while it is off.
class TracerParser : public ConfigParser {
public:
    explicit TracerParser(TracerScanner& scanner);

private:
    void apply(const Statement& statement) override;
    static void apply(Tracer& tracer, TracerScanner::Command command, const Statement& statement);
};
