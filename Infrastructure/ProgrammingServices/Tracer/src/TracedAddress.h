#pragma once

#include <cstdint>

/// The low 32 bits of an object's address, which is what traces show of it: their column is eight
/// digits wide.
inline std::uint32_t tracedAddress(const void* object)
{
    return static_cast<std::uint32_t>(reinterpret_cast<std::uintptr_t>(object));
}
