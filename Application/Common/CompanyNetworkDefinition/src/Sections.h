#pragma once

#include "CallMarker.h"
#include "Dictionary.h"

#include <memory>
#include <string>

/// The section that `parent` holds under the key; none when there is none or the entry is a leaf.
template<typename Section>
std::unique_ptr<Section> readSection(Dictionary& parent, const std::string& key)
{
    CallMarker marker("readSection");
    Item* const item = parent.getItem(key);
    Dictionary* const dictionary = item == nullptr ? nullptr : item->getAsDictionary();
    if (dictionary == nullptr)
        return nullptr;
    return std::make_unique<Section>(dictionary);
}

/// A new copy of a section; none of none.
template<typename Section>
std::unique_ptr<Section> copySection(const Section* section)
{
    CallMarker marker("copySection");
    if (section == nullptr)
        return nullptr;
    return std::make_unique<Section>(*section);
}
