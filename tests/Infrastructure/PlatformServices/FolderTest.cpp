#include "Folder.h"

#include "TemporaryFolder.h"

#include <filesystem>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using testing::ElementsAre;
using testing::Optional;

} // namespace

TEST(Folder, ListsItsEntriesFromTheFirstOneEachTime)
{
    const TemporaryFolder folder;
    for (const char* name : {"b", "a", ".hidden"})
        folder.write(name, "");
    const Folder opened(AT_FDCWD, folder.path());

    EXPECT_THAT(opened.names(), Optional(ElementsAre(".hidden", "a", "b")));
    EXPECT_THAT(opened.names(), Optional(ElementsAre(".hidden", "a", "b")));
}

TEST(Folder, ListsTheOpenFolderWhateverBecomesOfItsPath)
{
    const TemporaryFolder folder;
    std::filesystem::create_directory(folder.file("opened"));
    folder.write("opened/a", "");
    const Folder opened(AT_FDCWD, folder.file("opened"));
    std::filesystem::rename(folder.file("opened"), folder.file("moved"));
    folder.write("moved/b", "");

    EXPECT_THAT(opened.names(), Optional(ElementsAre("a", "b")));
}

TEST(Folder, ThatIsNotOpenTellsWhyAndHasNoNames)
{
    const TemporaryFolder folder;
    folder.write("file", "");
    std::filesystem::create_symlink(".", folder.file("link"));

    const Folder missing(AT_FDCWD, folder.file("missing"));
    const Folder file(AT_FDCWD, folder.file("file"));
    const Folder link(AT_FDCWD, folder.file("link"), O_NOFOLLOW);

    EXPECT_FALSE(missing.isOpen());
    EXPECT_EQ(missing.error(), std::errc::no_such_file_or_directory);
    EXPECT_EQ(file.error(), std::errc::not_a_directory);
    EXPECT_FALSE(link.isOpen());
    EXPECT_EQ(missing.names(), std::nullopt);
}

TEST(Folder, HasNoErrorWhenItIsOpenAndNoNamesOnceItIsClosed)
{
    const TemporaryFolder folder;
    Folder opened(AT_FDCWD, folder.path());
    EXPECT_TRUE(opened.isOpen());
    EXPECT_FALSE(opened.error());

    opened.close();

    EXPECT_FALSE(opened.isOpen());
    EXPECT_EQ(opened.names(), std::nullopt);
}

TEST(Folder, ThatWasRemovedMeanwhileHasNoEntries)
{
    const TemporaryFolder folder;
    std::filesystem::create_directory(folder.file("removed"));
    const Folder opened(AT_FDCWD, folder.file("removed"));
    std::filesystem::remove(folder.file("removed"));

    EXPECT_THAT(opened.names(), Optional(testing::IsEmpty()));
}
