#include "Require.h"
#include "Tracer.h"
#include "TracerOptions.h"
#include "TracerParser.h"
#include "TracerScanner.h"

#include <cstddef>
#include <cstdint>
#include <string>

/// Whatever is read, the tracer's options stay within their ranges, and without "TRACE_ON" nothing
/// changes.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    Tracer tracer;
    Tracer::SetInstance(&tracer);
    const std::string content(data, data + size);
    TracerScanner scanner(content);

    TracerParser(scanner).parse();

    require(tracer.getMsgTypeMask() <= 0x1FF, "a mask holds types alone");
    require(tracer.getMaxFiles() >= 0, "a number has no sign");
    require(tracer.getMaxLinesPerFile() >= 0, "a number has no sign");
    if (content.find("TRACE_ON") == std::string::npos) {
        Tracer untouched;
        require(optionsOf(tracer) == optionsOf(untouched), "commands before it are ignored");
    }
    return 0;
}
