#include "IDCardReader.h"
#include "Require.h"
#include "TemporaryFolder.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace {

bool isPrintable(std::string_view text)
{
    return std::all_of(text.begin(), text.end(), [](char character) {
        return character >= ' ' && character <= '~';
    });
}

} // namespace

/// A card is accepted only without an "&", and no value holds what cannot be printed.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const TemporaryFolder folder;
    const std::string content(data, data + size);
    folder.write("ID.txt", content);

    IDCardReader card(folder.path() + "/");
    const bool accepted = card.readIDCard();

    if (accepted) {
        require(content.find('&') == std::string::npos, "an ampersand is forbidden");
        require(!card.getIDCardParams().empty(), "an accepted card has an entry");
    }
    for (const auto& [key, value] : card.getIDCardParams()) {
        require(!key.empty(), "an empty key is skipped");
        require(key.find('=') == std::string::npos, "a key ends at the first sign");
        require(isPrintable(value), "a value is printable");
    }
    return 0;
}
