#include "Allocations.h"

#include <algorithm>
#include <cstdlib>
#include <new>

namespace {

Allocations* current = nullptr;

} // namespace

Allocations::Allocations()
{
    current = this;
}

Allocations::~Allocations()
{
    current = nullptr;
}

void Allocations::enter(std::size_t size)
{
    if (current == nullptr)
        return;
    current->m_largest = std::max(current->m_largest, size);
    if (++current->m_count == current->m_failing)
        throw std::bad_alloc();
}

void* operator new(std::size_t size)
{
    Allocations::enter(size);
    if (void* const memory =
            std::malloc(size)) // NOLINT(cppcoreguidelines-no-malloc): is new itself
        return memory;
    throw std::bad_alloc();
}

void operator delete(void* memory) noexcept
{
    std::free(memory); // NOLINT(cppcoreguidelines-no-malloc): is delete itself
}

void operator delete(void* memory, std::size_t /*size*/) noexcept
{
    std::free(memory); // NOLINT(cppcoreguidelines-no-malloc): is delete itself
}
