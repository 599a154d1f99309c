#include "ProgramPath.h"

#include "FileSystemManagement.h"
#include "ScopedEnvironment.h"
#include "TemporaryFolder.h"

#include <filesystem>

#include <gtest/gtest.h>

namespace fs = std::filesystem;

/// A folder with a program in it, which is the working directory for the time of the test.
class ProgramPathTest : public testing::Test {
protected:
    ProgramPathTest()
    {
        fs::create_directory(folder.file("bin"));
        fs::copy_file("/bin/true", program);
        fs::current_path(folder.path());
    }
    ~ProgramPathTest() override { fs::current_path(m_formerPath); }

    TemporaryFolder folder;
    const std::string program = folder.file("bin/the tool");

private:
    fs::path m_formerPath = fs::current_path();
};

TEST_F(ProgramPathTest, KeepsAnAbsolutePath)
{
    EXPECT_EQ(ProgramPath::resolve(program), program);
}

TEST_F(ProgramPathTest, MakesARelativePathAbsolute)
{
    EXPECT_EQ(ProgramPath::resolve("bin/the tool"), program);
    EXPECT_EQ(ProgramPath::resolve("./bin/../bin/the tool"), program);
}

TEST_F(ProgramPathTest, FollowsASymbolicLink)
{
    fs::create_symlink("bin/the tool", folder.file("link"));

    EXPECT_EQ(ProgramPath::resolve("./link"), program);
}

TEST_F(ProgramPathTest, FindsABareNameInPath)
{
    const ScopedEnvironment path("PATH", "/missing:" + folder.file("bin") + ":/usr/bin");

    EXPECT_EQ(ProgramPath::resolve("the tool"), program);
}

TEST_F(ProgramPathTest, TakesAnEmptyEntryOfPathAsTheWorkingDirectory)
{
    const ScopedEnvironment path("PATH", ":/missing");
    fs::current_path(folder.file("bin"));

    EXPECT_EQ(ProgramPath::resolve("the tool"), program);
}

TEST_F(ProgramPathTest, PassesOverWhatIsNoProgramInPath)
{
    fs::create_directories(folder.file("folders/the tool"));
    fs::create_directory(folder.file("texts"));
    folder.write("texts/the tool", "not executable");
    const ScopedEnvironment path(
        "PATH", folder.file("folders") + ":" + folder.file("texts") + ":" + folder.file("bin"));

    EXPECT_EQ(ProgramPath::resolve("the tool"), program);
}

TEST_F(ProgramPathTest, DoesNotLookForABareNameInTheWorkingDirectory)
{
    const ScopedEnvironment path("PATH", "/missing");
    fs::current_path(folder.file("bin"));

    EXPECT_EQ(
        ProgramPath::resolve("the tool"), FileSystemManagement::getCurrentExecutableFullPath());
}

TEST_F(ProgramPathTest, GivesTheRunningExecutableForAnInventedArgument)
{
    const std::string itself = FileSystemManagement::getCurrentExecutableFullPath();

    EXPECT_EQ(ProgramPath::resolve(""), itself);
    EXPECT_EQ(ProgramPath::resolve("-sh"), itself);
    EXPECT_EQ(ProgramPath::resolve("/missing/tool"), itself);
}
