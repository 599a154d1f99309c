#pragma once

#include <cstdint>
#include <sstream>
#include <string>
#include <utility>

/// How traces write the address of an item.
namespace ItemAddress {

/// The low 32 bits, which messages show.
inline unsigned low(const void* item)
{
    return static_cast<unsigned>(reinterpret_cast<std::uintptr_t>(item));
}

/// The whole address, which descriptions show.
inline std::string text(const void* item)
{
    std::ostringstream out;
    out << item;
    return std::move(out).str();
}

} // namespace ItemAddress
