#pragma once

#include "ConfigFileParser.h"
#include "TracerConfigFileScanner.h"
#include "TracerParser.h"

/// Applies a tracer configuration file to the published tracer.
using TracerConfigFileParser = ConfigFileParser<TracerConfigFileScanner, TracerParser>;
