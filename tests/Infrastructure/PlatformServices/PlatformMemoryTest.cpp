#include "Allocations.h"
#include "FileDescriptor.h"
#include "FileModeMask.h"
#include "FileSystemManagement.h"
#include "IDCardReader.h"
#include "OSManagement.h"
#include "PatternFileFinder.h"
#include "SafeFile.h"
#include "ScopedEnvironment.h"
#include "TemporaryFolder.h"

#include <array>
#include <cstdio>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/utsname.h>
#include <unistd.h>

using namespace std::string_literals;

// The linker leads every call of uname() here: the kernel calls itself so.
extern "C" int toldUname(utsname* system) __asm__("__wrap_uname");

extern "C" int toldUname(utsname* system)
{
    std::snprintf(system->release, sizeof(system->release), "10000.20000.30000");
    return 0;
}

namespace {

using testing::AllOf;
using testing::AnyOf;
using testing::Contains;
using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;
using testing::Pair;
using testing::SizeIs;

/// What an action answers where its first allocation fails, where its second does, and so on; and
/// where none does.
template<typename Answer>
struct Answers {
    std::vector<Answer> withoutMemory;
    Answer otherwise;
};

/// What the action works on is made anew for each answer, with memory.
template<typename Make, typename Action>
auto answersOf(const Make& make, const Action& action)
{
    using Made = std::invoke_result_t<const Make&>;
    Answers<std::invoke_result_t<const Action&, Made&>> answers;
    for (int nth = 1;; ++nth) {
        Made made = make();
        std::optional<Allocations> allocations(std::in_place);
        allocations->fail(nth);
        auto answer = action(made);
        const bool failed = allocations->count() >= nth;
        allocations.reset();
        if (!failed) {
            answers.otherwise = answer;
            return answers;
        }
        answers.withoutMemory.push_back(answer);
    }
}

/// A folder for one card.
class CardWithoutMemory : public testing::Test {
protected:
    auto answersForCard(const std::string& card) const
    {
        m_folder.write("ID.txt", card);
        return answersOf(
            [this] { return IDCardReader(m_folder.path() + "/"); },
            [](IDCardReader& reader) { return reader.readIDCard(); });
    }

    TemporaryFolder m_folder;
};

// Longer than what a string holds without an allocation.
const std::string LONG_NAME = "a name of many bytes";
const std::string LONG_PATTERN = "*****************";

/// A file, and a folder with a file in it. Its paths are made beforehand.
struct Tree {
    Tree()
    {
        folder.write(LONG_NAME, "a content of many bytes");
        std::filesystem::create_directory(inner);
        folder.write("folder of one file/" + LONG_NAME, "content");
    }

    TemporaryFolder folder;
    const std::string file = folder.file(LONG_NAME);
    const std::string copy = folder.file(LONG_NAME + ", a copy");
    const std::string inner = folder.file("folder of one file");
    const TemporaryFolder elsewhere;
    const std::string destination = elsewhere.file(LONG_NAME + "/" + LONG_NAME);
    const FileModeMask mask{022};
};

/// Expects an operation on such a tree to fail where there is no memory, and to succeed otherwise.
template<typename Operation>
void expectFailureWithoutMemory(const Operation& operation)
{
    const auto answers =
        answersOf([] { return Tree(); }, [&](const Tree& tree) -> bool { return operation(tree); });

    EXPECT_THAT(answers.withoutMemory, AllOf(Not(IsEmpty()), Each(false)));
    EXPECT_TRUE(answers.otherwise);
}

/// Expects a question to have no answer where there is no memory, and this one otherwise.
void expectNoTextWithoutMemory(const std::string& text, std::string (*question)())
{
    const auto answers = answersOf([] { return 0; }, [&](int) { return question(); });

    EXPECT_THAT(answers.withoutMemory, AllOf(Not(IsEmpty()), Each("")));
    EXPECT_EQ(answers.otherwise, text);
}

/// Whether these are the first bytes of the file. Allocates nothing.
bool holds(const std::string& path, std::string_view content)
{
    std::array<char, 64> bytes{};
    const FileDescriptor file(open(path.c_str(), O_RDONLY));
    return read(file.get(), bytes.data(), content.size()) == static_cast<ssize_t>(content.size()) &&
           content == std::string_view(bytes.data(), content.size());
}

/// Whether the finder finds the three entries of the tree.
bool findsAll(FileFinder&& finder)
{
    int found = 0;
    std::string path;
    while (finder.findNextFile(path))
        ++found;
    EXPECT_FALSE(finder.findNextFile(path));
    return found == 3;
}

} // namespace

TEST_F(CardWithoutMemory, IsRefused)
{
    const auto answers =
        answersForCard("COMMERCIAL_VERSION=a version with a name\nPRODUCT_NAME=Tool\n"
                       "UPGRADE_CODE={00000000-0000-0000-0000-000000000000}\n");

    EXPECT_THAT(answers.withoutMemory, SizeIs(testing::Ge(4U)));
    EXPECT_THAT(answers.withoutMemory, Each(false));
    EXPECT_TRUE(answers.otherwise);
}

TEST_F(CardWithoutMemory, IsNeverAcceptedWithAForbiddenCharacter)
{
    const auto answers =
        answersForCard("PRODUCT_NAME=Tool\n"
                       "UPGRADE_CODE={00000000-0000-0000-0000-000000000000}\n"
                       "TARGET=a line that is longer than the others and holds the character: &\n");

    EXPECT_THAT(answers.withoutMemory, SizeIs(testing::Ge(3U)));
    EXPECT_THAT(answers.withoutMemory, Each(false));
    EXPECT_FALSE(answers.otherwise);
}

TEST(IDCardReader, GivesAnEmptyTextWithoutMemoryForAnother)
{
    const TemporaryFolder folder;
    const std::string code = "{00000000-0000-0000-0000-000000000000}";
    folder.write("ID.txt", "UPGRADE_CODE=" + code + "\nCOMMERCIAL_VERSION=" + code + "\n");
    IDCardReader reader(folder.path() + "/");
    ASSERT_TRUE(reader.readIDCard());
    const auto theReader = [&]() -> IDCardReader& { return reader; };

    const auto params =
        answersOf(theReader, [](auto& card) { return card.getParam("UPGRADE_CODE"); });
    const auto versions =
        answersOf(theReader, [](auto& card) { return card.getCommercialVersion(); });
    const auto maps = answersOf(theReader, [](auto& card) { return card.getIDCardParams(); });

    EXPECT_THAT(params.withoutMemory, ElementsAre(""));
    EXPECT_EQ(params.otherwise, code);
    EXPECT_THAT(versions.withoutMemory, ElementsAre("", ""));
    EXPECT_EQ(versions.otherwise, code);
    EXPECT_THAT(maps.withoutMemory, AllOf(Not(IsEmpty()), Each(IsEmpty())));
    EXPECT_THAT(maps.otherwise, SizeIs(2));
}

TEST(FileSystemWithoutMemory, FailsToMakeFoldersAndFiles)
{
    expectFailureWithoutMemory(
        [](const Tree& tree) { return FileSystemManagement::createFolder(tree.destination); });
    expectFailureWithoutMemory(
        [](const Tree& tree) { return FileSystemManagement::makeFolder(tree.destination, 0700); });
    expectFailureWithoutMemory([](const Tree& tree) {
        return FileSystemManagement::createFile(tree.destination, LONG_NAME);
    });
}

TEST(FileSystemWithoutMemory, FailsToCopy)
{
    expectFailureWithoutMemory(
        [](const Tree& tree) { return FileSystemManagement::Copy(tree.file, tree.copy); });
    expectFailureWithoutMemory([](const Tree& tree) {
        return FileSystemManagement::copyFolder(tree.inner, tree.destination, LONG_NAME);
    });
}

// Kept: nobody asks what became of a sub-folder.
TEST(FileSystemWithoutMemory, GoesOnBehindASubFolderThatItCannotCopy)
{
    const auto answers = answersOf(
        [] { return Tree(); },
        [](const Tree& tree) {
            return FileSystemManagement::copyFolder(tree.folder.path(), tree.destination, "*");
        });

    EXPECT_THAT(answers.withoutMemory, AllOf(Contains(true), Contains(false)));
    EXPECT_TRUE(answers.otherwise);
}

TEST(FileSystemWithoutMemory, FailsToDelete)
{
    for (const bool removeSelf : {false, true})
        expectFailureWithoutMemory([&](const Tree& tree) {
            return FileSystemManagement::deleteFolder(tree.folder.path(), removeSelf);
        });
}

TEST(FileSystemWithoutMemory, FindsNoMoreAndNothingTwice)
{
    expectFailureWithoutMemory(
        [](const Tree& tree) { return findsAll(FileFinder(tree.folder.path(), LONG_PATTERN)); });
    expectFailureWithoutMemory([](const Tree& tree) {
        return findsAll(PatternFileFinder(tree.folder.path(), LONG_PATTERN));
    });
}

TEST(FileSystemWithoutMemory, TellsNoPath)
{
    const ScopedEnvironment user("XDG_DATA_HOME", "/folder of the user");
    const ScopedEnvironment common("TAV_COMMON_DATA_DIR", "/folder of all users");
    const std::filesystem::path program = std::filesystem::canonical("/proc/self/exe");
    const std::string directory = program.parent_path().string() + "/";

    expectNoTextWithoutMemory(program, FileSystemManagement::getCurrentExecutableFullPath);
    expectNoTextWithoutMemory(program.filename(), FileSystemManagement::getCurrentExecutableName);
    expectNoTextWithoutMemory(directory, FileSystemManagement::getCurrentExecutableDirectory);
    expectNoTextWithoutMemory(directory, FileSystemManagement::getCurrentOutputDirectory);
    expectNoTextWithoutMemory("/folder of the user", FileSystemManagement::getUserAppDataDirectory);
    expectNoTextWithoutMemory(
        "/folder of all users", FileSystemManagement::getCommonAppDataDirectory);
}

// Settings that cannot be read are as absent.
TEST(FileSystemWithoutMemory, TellsNoDesktopFolderOrTheUsualOne)
{
    const TemporaryFolder home;
    const ScopedEnvironment homeVariable("HOME", home.path());
    const ScopedEnvironment settings("XDG_CONFIG_HOME", home.path());
    home.write("user-dirs.dirs", "# a comment of many bytes\nXDG_DESKTOP_DIR=\"$HOME/my own\"\n");

    const auto answers = answersOf(
        [] { return 0; }, [](int) { return FileSystemManagement::getUserDesktopFolder(); });

    EXPECT_THAT(answers.withoutMemory, Contains(""));
    EXPECT_THAT(answers.withoutMemory, Each(AnyOf("", home.file("Desktop"))));
    EXPECT_EQ(answers.otherwise, home.file("my own"));
}

TEST(OSManagementWithoutMemory, TellsNothing)
{
    const ScopedEnvironment language("LANGUAGE", "fr_of_many_bytes");

    expectNoTextWithoutMemory("Mac OS X 10000.20000.30000 ", OSManagement::getCurrentOS);
    expectNoTextWithoutMemory("Mac OS X_10000.20000.30000", OSManagement::getFullOSDescription);
    expectNoTextWithoutMemory("fr", OSManagement::getUserUILanguage);
}

TEST(OSManagementWithoutMemory, TellsNeitherNameNorVersion)
{
    const auto answers = answersOf(
        [] { return 0; },
        [](int) {
            std::string name = "former";
            std::string version = "former";
            OSManagement::getCurrentOS(name, version);
            return std::pair(std::move(name), std::move(version));
        });

    EXPECT_THAT(answers.withoutMemory, AllOf(Not(IsEmpty()), Each(Pair("", ""))));
    EXPECT_EQ(answers.otherwise, std::pair("Mac OS X"s, "10000.20000.30000"s));
}

TEST(SafeFileWithoutMemory, ReadsNothing)
{
    const auto answers = answersOf(
        [] { return Tree(); },
        [](const Tree& tree) { return SafeFile::read(tree.file).has_value(); });

    EXPECT_THAT(answers.withoutMemory, AllOf(Not(IsEmpty()), Each(false)));
    EXPECT_TRUE(answers.otherwise);
}

TEST(SafeFileWithoutMemory, ReplacesNothingAndSaysSo)
{
    const auto answers = answersOf(
        [] { return Tree(); },
        [](const Tree& tree) {
            const std::string failure =
                SafeFile::replace(tree.file, "the new content", SafeFile::Backup::keep);
            return std::pair(failure == "std::bad_alloc", holds(tree.file, "the new content"));
        });

    EXPECT_THAT(answers.withoutMemory, AllOf(Not(IsEmpty()), Each(Pair(true, false))));
    EXPECT_THAT(answers.otherwise, Pair(false, true));
}
