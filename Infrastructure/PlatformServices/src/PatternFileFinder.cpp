#include "PatternFileFinder.h"

PatternFileFinder::PatternFileFinder(const std::string& directory, const std::string& pattern)
    : FileFinder(directory, pattern, [](const std::string& given) { return given; })
{
}

bool PatternFileFinder::findFirstFile(std::string& out)
{
    return findMatch(out);
}

bool PatternFileFinder::findNextFile(std::string& out)
{
    return findMatch(out);
}
