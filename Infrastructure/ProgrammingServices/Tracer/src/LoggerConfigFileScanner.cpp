#include "LoggerConfigFileScanner.h"

LoggerConfigFileScanner::LoggerConfigFileScanner(const char* fileName)
    : LoggerScanner(readFile(fileName, "log"))
{
}
