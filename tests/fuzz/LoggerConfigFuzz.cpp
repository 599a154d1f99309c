#include "Logger.h"
#include "LoggerParser.h"
#include "LoggerScanner.h"
#include "Require.h"

#include <cstddef>
#include <cstdint>
#include <string>

/// Whatever is read, the log's options stay within their ranges.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    Logger logger;
    Logger::SetInstance(&logger);
    LoggerScanner scanner(std::string(data, data + size));

    LoggerParser(scanner).parse();

    require(logger.getLevelMask() <= 0x1FF, "a mask holds levels alone");
    require(logger.getMaxFiles() >= 0, "a number has no sign");
    require(logger.getMaxLinesPerFile() >= 0, "a number has no sign");
    return 0;
}
