#include "ParameterRecords.h"
#include "Require.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>

namespace {

/// What stands behind a length in front of the bytes.
std::optional<std::string> takeSized(std::string& bytes)
{
    if (bytes.size() < 4)
        return std::nullopt;
    std::uint64_t size = 0;
    for (std::size_t i = 4; i-- > 0;)
        size = size * 256 + static_cast<unsigned char>(bytes[i]);
    if (size >= 0x80000000U || bytes.size() - 4 < size)
        return std::nullopt;
    std::string block = bytes.substr(4, size);
    bytes.erase(0, 4 + size);
    return block;
}

/// The names of the whole records that the bytes begin with, told once more in another way, and the
/// bytes behind them.
std::pair<std::set<std::string>, std::string> wholeRecords(std::string bytes)
{
    std::set<std::string> names;
    for (std::string rest = bytes;; bytes = rest) {
        auto name = takeSized(rest);
        if (!name || !name->ends_with('\0') || !takeSized(rest))
            return {names, bytes};
        name->pop_back();
        names.insert(*name);
    }
}

} // namespace

/// Whatever is read fits into the bytes it was read from, can be written and is read back the same.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string bytes(data, data + size);
    std::string_view unread = bytes;
    const t_BinaryParamMap first = ParameterRecords::takeAll(unread);
    const std::string written = ParameterRecords::toBytes(first);

    const auto [names, rest] = wholeRecords(bytes);
    require(first.size() == names.size(), "no whole record is left out");
    require(unread == rest, "the reading ends at the first broken record");
    require(written.size() <= bytes.size(), "no more is read than there is");
    for (const auto& [name, parameter] : first) {
        require(names.contains(name), "each name was there");
        require(parameter.getName() == name, "each parameter is under its name");
        require(bytes.find(parameter.marshall()) != std::string::npos, "each record was there");
    }
    require(
        ParameterRecords::toBytes(ParameterRecords::parse(written)) == written,
        "read back the same");
    return 0;
}
