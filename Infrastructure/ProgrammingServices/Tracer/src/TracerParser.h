#pragma once

#include "ConfigParser.h"
#include "TracerScanner.h"

class Tracer;

/// Applies the commands of a tracer configuration file to the published tracer. All but the two
/// that switch tracing are ignored while it is off.
class TracerParser : public ConfigParser<Tracer> {
public:
    explicit TracerParser(TracerScanner& scanner);

private:
    bool acts(const Command& command, Tracer& tracer) const override;
};
