#include "ParameterRecords.h"
#include "Require.h"

#include <cstddef>
#include <cstdint>
#include <string>

/// Whatever is read fits into the bytes it was read from, can be written and is read back the same.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string bytes(data, data + size);
    const t_BinaryParamMap first = ParameterRecords::parse(bytes);
    const std::string written = ParameterRecords::toBytes(first);

    require(written.size() <= bytes.size(), "no more is read than there is");
    for (const auto& [name, parameter] : first) {
        require(parameter.getName() == name, "each parameter is under its name");
        require(bytes.find(parameter.marshall()) != std::string::npos, "each record was there");
    }
    require(
        ParameterRecords::toBytes(ParameterRecords::parse(written)) == written,
        "read back the same");
    return 0;
}
