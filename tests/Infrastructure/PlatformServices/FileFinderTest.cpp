#include "FileFinder.h"

#include "DeepFolder.h"
#include "OrdinaryUser.h"
#include "PatternFileFinder.h"
#include "TemporaryFolder.h"
#include "VirtualSlot.h"

#include <type_traits>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

std::vector<std::string> all(FileFinder& finder)
{
    std::vector<std::string> found;
    std::string path;
    for (bool more = finder.findFirstFile(path); more; more = finder.findNextFile(path))
        found.push_back(path);
    return found;
}

std::vector<std::string> allOf(const std::string& folder, const std::string& pattern)
{
    FileFinder finder(folder, pattern);
    return all(finder);
}

std::vector<std::string> allOfPattern(const std::string& folder, const std::string& pattern)
{
    PatternFileFinder finder(folder, pattern);
    return all(finder);
}

/// a.txt, b.cfg, name, sub/, sub/c.txt, sub/deep/, sub/deep/d.txt
class Finders : public testing::Test {
protected:
    Finders()
    {
        std::filesystem::create_directories(m_folder.file("sub/deep"));
        m_folder.write("a.txt", "");
        m_folder.write("b.cfg", "");
        m_folder.write("name", "");
        m_folder.write("sub/c.txt", "");
        m_folder.write("sub/deep/d.txt", "");
    }

    TemporaryFolder m_folder;
};

static_assert(std::is_base_of_v<FileFinder, PatternFileFinder>);
static_assert(std::has_virtual_destructor_v<FileFinder>);

// A member that is not overridden has the type of its base's.
using Find = bool (PatternFileFinder::*)(std::string&);
static_assert(std::is_same_v<Find, decltype(&PatternFileFinder::findFirstFile)>);
static_assert(std::is_same_v<Find, decltype(&PatternFileFinder::findNextFile)>);

} // namespace

// The slots behind the destructor's two.
TEST(FinderSlots, HoldFirstThenNext)
{
    EXPECT_EQ(virtualSlot(&FileFinder::findFirstFile), 2);
    EXPECT_EQ(virtualSlot(&FileFinder::findNextFile), 3);
    EXPECT_EQ(virtualSlot(&PatternFileFinder::findFirstFile), 2);
    EXPECT_EQ(virtualSlot(&PatternFileFinder::findNextFile), 3);
}

TEST_F(Finders, FindEntriesOfAllLevelsAsRelativePaths)
{
    EXPECT_THAT(
        allOf(m_folder.path(), "*"),
        ElementsAre("a.txt", "b.cfg", "name", "sub", "sub/c.txt", "sub/deep", "sub/deep/d.txt"));
    EXPECT_THAT(allOfPattern(m_folder.path(), "*"), testing::SizeIs(7));
}

TEST_F(Finders, FindTheSameBehindATrailingSeparator)
{
    EXPECT_EQ(allOf(m_folder.path() + "/", "*"), allOf(m_folder.path(), "*"));
}

TEST_F(Finders, LetAStarCrossTheSeparator)
{
    EXPECT_THAT(
        allOfPattern(m_folder.path(), "s*.txt"), ElementsAre("sub/c.txt", "sub/deep/d.txt"));
    EXPECT_THAT(allOfPattern(m_folder.path(), "sub?c.txt"), ElementsAre("sub/c.txt"));
}

TEST_F(Finders, TakeNoOtherCharacterAsSpecial)
{
    m_folder.write("[ab]", "");
    m_folder.write("x\\", "");

    EXPECT_THAT(allOfPattern(m_folder.path(), "[ab]"), ElementsAre("[ab]"));
    EXPECT_THAT(allOfPattern(m_folder.path(), "[a-z].txt"), IsEmpty());
    EXPECT_THAT(allOfPattern(m_folder.path(), "x\\"), ElementsAre("x\\"));
}

TEST_F(Finders, TellUpperFromLowerCase)
{
    EXPECT_THAT(allOfPattern(m_folder.path(), "A.txt"), IsEmpty());
    EXPECT_THAT(allOf(m_folder.path(), "TXT"), IsEmpty());
}

TEST_F(Finders, PutAStarInFrontOfAPlainPattern)
{
    EXPECT_THAT(allOf(m_folder.path(), "txt"), ElementsAre("a.txt", "sub/c.txt", "sub/deep/d.txt"));
    EXPECT_THAT(allOf(m_folder.path(), "?.cfg"), ElementsAre("b.cfg"));
    EXPECT_THAT(allOf(m_folder.path(), ""), testing::SizeIs(7));
}

TEST_F(Finders, KeepAPatternThatBeginsWithAStar)
{
    EXPECT_THAT(allOf(m_folder.path(), "*.cfg"), ElementsAre("b.cfg"));
    EXPECT_THAT(
        allOf(m_folder.path(), "*.*t"), ElementsAre("a.txt", "sub/c.txt", "sub/deep/d.txt"));
}

TEST_F(Finders, FindNamesWithoutADotByStarDotStar)
{
    EXPECT_THAT(allOf(m_folder.path(), "*.*"), testing::SizeIs(7));
}

TEST_F(Finders, UseTheOtherFindersPatternUnchanged)
{
    EXPECT_THAT(
        allOfPattern(m_folder.path(), "*.*"),
        ElementsAre("a.txt", "b.cfg", "sub/c.txt", "sub/deep/d.txt"));
    EXPECT_THAT(allOfPattern(m_folder.path(), "txt"), IsEmpty());
    EXPECT_THAT(allOfPattern(m_folder.path(), "name"), ElementsAre("name"));
}

TEST_F(Finders, NeverStartAgain)
{
    FileFinder finder(m_folder.path(), "txt");
    PatternFileFinder patternFinder(m_folder.path(), "*.txt");

    for (FileFinder* each : {&finder, static_cast<FileFinder*>(&patternFinder)}) {
        std::string path;
        EXPECT_TRUE(each->findFirstFile(path));
        EXPECT_EQ(path, "a.txt");
        EXPECT_TRUE(each->findFirstFile(path));
        EXPECT_EQ(path, "sub/c.txt");
        EXPECT_TRUE(each->findNextFile(path));
        EXPECT_EQ(path, "sub/deep/d.txt");
        EXPECT_FALSE(each->findFirstFile(path));
        EXPECT_FALSE(each->findNextFile(path));
        EXPECT_EQ(path, "sub/deep/d.txt");
    }
}

TEST_F(Finders, ListALinkWithoutFollowingIt)
{
    ASSERT_EQ(symlink("sub", m_folder.file("link").c_str()), 0);
    ASSERT_EQ(symlink("..", m_folder.file("sub/up").c_str()), 0);

    EXPECT_THAT(allOfPattern(m_folder.path(), "link*"), ElementsAre("link"));
    EXPECT_THAT(allOfPattern(m_folder.path(), "sub/up*"), ElementsAre("sub/up"));
}

TEST_F(Finders, FollowALinkToTheFolderItself)
{
    ASSERT_EQ(symlink("sub", m_folder.file("link").c_str()), 0);

    EXPECT_THAT(allOf(m_folder.file("link"), "*"), ElementsAre("c.txt", "deep", "deep/d.txt"));
}

TEST_F(Finders, ListAFifoWithoutWaiting)
{
    ASSERT_EQ(mkfifo(m_folder.file("pipe").c_str(), 0600), 0);

    EXPECT_THAT(allOfPattern(m_folder.path(), "pipe"), ElementsAre("pipe"));
}

TEST_F(Finders, FindNothingWhereThereIsNoFolder)
{
    EXPECT_THAT(allOf(m_folder.file("missing"), "*"), IsEmpty());
    EXPECT_THAT(allOf(m_folder.file("a.txt"), "*"), IsEmpty());
    EXPECT_THAT(allOf("", "*"), IsEmpty());
    EXPECT_THAT(allOfPattern("", "*"), IsEmpty());
}

TEST_F(Finders, FindTheNamesInAFolderThatMayBeReadAndNotSearched)
{
    namespace fs = std::filesystem;
    m_folder.write("z", "");
    fs::permissions(m_folder.path(), fs::perms{0755});
    fs::permissions(m_folder.file("sub"), fs::perms{0444});

    EXPECT_TRUE(asOrdinaryUser([&] {
        EXPECT_THAT(
            allOf(m_folder.path(), "*"),
            ElementsAre("a.txt", "b.cfg", "name", "sub", "sub/c.txt", "sub/deep", "z"));
        EXPECT_THAT(allOf(m_folder.file("sub"), "*"), ElementsAre("c.txt", "deep"));
        return !HasFailure();
    }));
    fs::permissions(m_folder.file("sub"), fs::perms{0755});
}

TEST_F(Finders, PassOverAFolderThatMayNotBeRead)
{
    namespace fs = std::filesystem;
    m_folder.write("z", "");
    fs::permissions(m_folder.path(), fs::perms{0755});
    fs::permissions(m_folder.file("sub"), fs::perms{0111});

    EXPECT_TRUE(asOrdinaryUser([&] {
        EXPECT_THAT(allOf(m_folder.path(), "*"), ElementsAre("a.txt", "b.cfg", "name", "sub", "z"));
        EXPECT_THAT(allOf(m_folder.file("sub"), "*"), IsEmpty());
        return !HasFailure();
    }));
    fs::permissions(m_folder.file("sub"), fs::perms{0755});
}

TEST_F(Finders, FindWhatLiesDeeperThanAPathCanBeLong)
{
    constexpr int levels = 20;
    const std::string name = nest(m_folder.file("sub"), levels);
    m_folder.write("z", "");

    std::vector<std::string> found;
    EXPECT_TRUE(withThreeDescriptors([&] {
        found = allOfPattern(m_folder.path(), "*");
        return found.size() == 8 + levels && found.back() == "z";
    }));
    found = allOfPattern(m_folder.path(), "sub/" + name + "*");

    ASSERT_THAT(found, testing::SizeIs(levels));
    std::string expected = "sub";
    for (const std::string& path : found)
        EXPECT_EQ(path, expected += "/" + name);
}

TEST_F(Finders, PassOverAFolderThatVanishes)
{
    FileFinder finder(m_folder.path(), "*");
    std::string path;

    while (path != "name")
        ASSERT_TRUE(finder.findNextFile(path));
    std::filesystem::remove_all(m_folder.file("sub"));

    EXPECT_TRUE(finder.findNextFile(path));
    EXPECT_EQ(path, "sub");
    EXPECT_FALSE(finder.findNextFile(path));
}

TEST_F(Finders, EndInAFolderThatIsMovedOutOfTheTree)
{
    const TemporaryFolder elsewhere;
    elsewhere.write("outside", "");
    m_folder.write("z", "");
    FileFinder finder(m_folder.path(), "*");
    std::string path;

    while (path != "sub/deep/d.txt")
        ASSERT_TRUE(finder.findNextFile(path));
    std::filesystem::rename(m_folder.file("sub/deep"), elsewhere.file("deep"));

    EXPECT_FALSE(finder.findNextFile(path));
    EXPECT_FALSE(finder.findNextFile(path));
}
