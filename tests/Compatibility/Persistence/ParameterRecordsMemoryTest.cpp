#include "ParameterRecords.h"

#include <algorithm>
#include <cstdlib>
#include <new>

#include <gtest/gtest.h>

using namespace std::string_literals;

namespace {

std::size_t largestAllocation = 0;

} // namespace

void* operator new(std::size_t size)
{
    largestAllocation = std::max(largestAllocation, size);
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

TEST(ParameterRecords, AllocateNothingForLengthsBeyondTheFile)
{
    const std::string record = "\x02\0\0\0a\0\x01\0\0\0A"s;
    const std::string longName = "\xFF\xFF\xFF\x7Fxx"s;
    const std::string longData = "\x02\0\0\0b\0\xFF\xFF\xFF\x7Fxx"s;
    const std::string negative = "\x02\0\0\0b\0\xFF\xFF\xFF\xFFxx"s;

    for (const std::string& lie : {longName, longData, negative}) {
        const std::string bytes = record + lie;
        largestAllocation = 0;

        EXPECT_EQ(ParameterRecords::parse(bytes).size(), 1U);

        // One node of the map is all that a record as short as this one needs.
        EXPECT_LE(largestAllocation, 256U);
        EXPECT_GT(largestAllocation, 0U);
    }
}
