#include "TracerConfigFileScanner.h"

TracerConfigFileScanner::TracerConfigFileScanner(const char* fileName)
    : TracerScanner(readFile(fileName, "tracer"))
{
}
