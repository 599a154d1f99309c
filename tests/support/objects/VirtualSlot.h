#pragma once

#include <array>
#include <bit>
#include <cstddef>

/// The slot of a virtual operation among those of its class, counted from 0; a virtual destructor
/// takes two. Read out of the pointer to the member, which holds the slot's offset plus one.
template<typename Operation>
std::ptrdiff_t virtualSlot(Operation operation)
{
    const auto words = std::bit_cast<std::array<std::ptrdiff_t, 2>>(operation);
    return (words[0] - 1) / static_cast<std::ptrdiff_t>(sizeof(void*));
}

/// Whether the operation is virtual at all: the address of another one is even.
template<typename Operation>
bool isVirtualOperation(Operation operation)
{
    return (std::bit_cast<std::array<std::ptrdiff_t, 2>>(operation)[0] & 1) == 1;
}
