#pragma once

#include "ConfigFileParser.h"
#include "LoggerConfigFileScanner.h"
#include "LoggerParser.h"

/// Applies a logger configuration file to the published log.
using LoggerConfigFileParser = ConfigFileParser<LoggerConfigFileScanner, LoggerParser>;
