#pragma once

#include <sstream>
#include <string>
#include <utility>

/// The whole address of an item, as its description shows it.
inline std::string itemAddress(const void* item)
{
    std::ostringstream out;
    out << item;
    return std::move(out).str();
}
