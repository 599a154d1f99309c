#include "Dictionary.h"
#include "DictionaryDescent.h"
#include "Require.h"

#include <cstddef>
#include <cstdint>
#include <sstream>
#include <string>

namespace {

Dictionary dictionaryFrom(const std::string& text)
{
    Dictionary dictionary;
    std::stringstream in(text);
    dictionary.unMarshall(in);
    return dictionary;
}

/// Nothing is escaped: of a key or text that holds "</" only what stands before is read back.
bool isRepresentable(const DictionaryEntries::Entry& entry)
{
    const auto hasOneEndTag = [](const std::string& line) {
        return line.find("</") == line.rfind("</");
    };
    const bool isLeaf = DictionaryEntries::dictionaryIn(entry) == nullptr;
    return hasOneEndTag(entry.first + "</key>") &&
           (!isLeaf || hasOneEndTag(entry.second->marshall("")));
}

bool isRepresentable(const Dictionary& dictionary)
{
    DictionaryDescent descent(nullptr);
    descent.enter(dictionary);
    while (descent.depth() > 0) {
        const DictionaryEntries::Entry* const entry = descent.next();
        if (entry == nullptr)
            descent.leave();
        else if (!isRepresentable(*entry))
            return false;
        else if (const Dictionary* const child = DictionaryEntries::dictionaryIn(*entry))
            descent.enter(*child);
    }
    return true;
}

} // namespace

/// Whatever is read is written so that it is read back: the same at once when it can be written
/// without loss, and from the second writing on in any case.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    Dictionary first = dictionaryFrom(std::string(data, data + size));
    const std::string firstText = first.marshall("");
    Dictionary second = dictionaryFrom(firstText);
    const std::string secondText = second.marshall("");

    if (isRepresentable(first)) {
        require(second.equals(first), "read back equal");
        require(secondText == firstText, "written again to the same text");
    }
    require(isRepresentable(second), "what was written once can be written without loss");
    require(
        dictionaryFrom(secondText).marshall("") == secondText, "the second text is the last one");
    require(Dictionary(first).equals(first), "a copy is equal");
    return 0;
}
