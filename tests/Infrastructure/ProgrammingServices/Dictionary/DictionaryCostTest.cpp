#include "Allocations.h"
#include "Dictionary.h"

#include <string>

#include <gtest/gtest.h>

namespace {

// Neither for the nested calls nor for the messages.
TEST(UntracedDictionaryCalls, AllocateNothing)
{
    const std::string path = "a key longer than a short text.another key of this kind.k";
    const std::string missing = "a key longer than a short text.a key that is not there";
    Dictionary tree;
    tree.addValue(path, "x");

    const Allocations allocations;
    tree.getItem(path);
    tree.getItem(missing);
    tree.doRemoveItem(path);

    EXPECT_EQ(allocations.count(), 0);
}

} // namespace
