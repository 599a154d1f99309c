#include "FileDescriptor.h"

#include <cerrno>
#include <utility>

#include <fcntl.h>
#include <gtest/gtest.h>

namespace {

int openAny()
{
    return open("/", O_RDONLY | O_DIRECTORY | O_CLOEXEC);
}

bool isOpen(int descriptor)
{
    return fcntl(descriptor, F_GETFD) != -1 || errno != EBADF;
}

} // namespace

TEST(FileDescriptor, IsClosedAtTheEndOfItsScope)
{
    const int number = openAny();

    {
        const FileDescriptor descriptor(number);
        EXPECT_EQ(descriptor.get(), number);
        EXPECT_TRUE(isOpen(number));
    }

    EXPECT_FALSE(isOpen(number));
}

TEST(FileDescriptor, IsOpenFromZeroOn)
{
    FileDescriptor first(0);
    const FileDescriptor none(-1);

    EXPECT_TRUE(first.isOpen());
    EXPECT_FALSE(none.isOpen());
    EXPECT_EQ(first.release(), 0);
    EXPECT_FALSE(first.isOpen());
}

TEST(FileDescriptor, ChangesItsOwner)
{
    const int number = openAny();
    FileDescriptor former(number);

    FileDescriptor moved(std::move(former));
    FileDescriptor assigned(-1);
    assigned = std::move(moved);

    EXPECT_EQ(assigned.get(), number);
    EXPECT_TRUE(isOpen(number));
}
