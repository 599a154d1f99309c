#include "FileSystemManagement.h"
#include "OrdinaryUser.h"
#include "ScopedEnvironment.h"
#include "TemporaryFolder.h"

#include <array>
#include <cstdio>
#include <filesystem>
#include <optional>
#include <ostream>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <pwd.h>
#include <sys/auxv.h>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace {

using testing::HasSubstr;

// What the system tells the code in place of the truth.
bool toldSecure = false;
std::optional<std::string> toldHome;
constexpr uid_t REAL_USER = 1234;

std::string outputOf(const std::string& program)
{
    std::string output;
    FILE* pipe = popen(program.c_str(), "r");
    std::array<char, 4096> piece{};
    while (std::fgets(piece.data(), piece.size(), pipe) != nullptr)
        output += piece.data();
    pclose(pipe);
    return output;
}

bool runsProgramsAsTheirOwner(const std::string& folder)
{
    struct statvfs volume {};
    return statvfs(folder.c_str(), &volume) == 0 && (volume.f_flag & ST_NOSUID) == 0 &&
           prctl(PR_GET_NO_NEW_PRIVS, 0, 0, 0, 0) == 0;
}

} // namespace

// The linker leads every call of these functions here.
extern "C" {

unsigned long realGetauxval(unsigned long type) __asm__("__real_getauxval");
unsigned long toldGetauxval(unsigned long type) __asm__("__wrap_getauxval");
uid_t toldGetuid() __asm__("__wrap_getuid");
int toldGetpwuid(uid_t user, passwd* entry, char* texts, std::size_t size, passwd** found) __asm__(
    "__wrap_getpwuid_r");

unsigned long toldGetauxval(unsigned long type)
{
    return type == AT_SECURE ? static_cast<unsigned long>(toldSecure) : realGetauxval(type);
}

uid_t toldGetuid()
{
    return REAL_USER;
}

// A user of whom there is much to tell.
int toldGetpwuid(uid_t user, passwd* entry, char* /*texts*/, std::size_t size, passwd** found)
{
    EXPECT_EQ(user, REAL_USER);
    EXPECT_GE(size, 10000U);
    *found = toldHome ? entry : nullptr;
    if (toldHome)
        entry->pw_dir = toldHome->data();
    return 0;
}

} // extern "C"

namespace {

/// A user with a home folder of his own and no variable that says where else to look.
class SystemFolderPaths : public testing::Test {
protected:
    SystemFolderPaths()
    {
        toldSecure = false;
        toldHome.reset();
        fs::create_directory(m_home.file(".config"));
    }

    void writeUserDirectories(const std::string& content) const
    {
        m_home.write(".config/user-dirs.dirs", content);
    }

    TemporaryFolder m_home;
    ScopedEnvironment m_homeVariable{"HOME", m_home.path()};
    ScopedEnvironment m_dataVariable{"XDG_DATA_HOME", std::nullopt};
    ScopedEnvironment m_configVariable{"XDG_CONFIG_HOME", std::nullopt};
    ScopedEnvironment m_commonVariable{"TAV_COMMON_DATA_DIR", std::nullopt};
};

using ExecutablePath = SystemFolderPaths;
using UserDataFolder = SystemFolderPaths;
using CommonDataFolder = SystemFolderPaths;
using DesktopFolder = SystemFolderPaths;

} // namespace

TEST_F(ExecutablePath, IsCutAfterItsLastSeparator)
{
    const std::string root = fs::canonical(m_home.path());
    fs::create_directories(m_home.file("a/b"));
    fs::copy_file(TAV_PLATFORM_PROBE, m_home.file("a/b/tool"));

    const std::string output = outputOf(m_home.file("a/b/tool"));

    EXPECT_THAT(output, HasSubstr("path=" + root + "/a/b/tool\n"));
    EXPECT_THAT(output, HasSubstr("name=tool\n"));
    EXPECT_THAT(output, HasSubstr("directory=" + root + "/a/b/\n"));
    EXPECT_THAT(output, HasSubstr("output=" + root + "/a/b/\n"));
}

TEST_F(ExecutablePath, HasItsLinksResolved)
{
    const std::string root = fs::canonical(m_home.path());
    fs::create_directories(m_home.file("a/b"));
    fs::copy_file(TAV_PLATFORM_PROBE, m_home.file("a/b/tool"));
    fs::create_symlink("a", m_home.file("link"));
    fs::create_symlink("link/b/tool", m_home.file("start"));

    EXPECT_THAT(
        outputOf(m_home.file("start")), HasSubstr("path=" + root + "/a/b/tool\nname=tool\n"));
}

TEST_F(ExecutablePath, MayBeLong)
{
    std::string deep = fs::canonical(m_home.path());
    while (deep.size() < 1500)
        deep += "/" + std::string(200, 'x');
    fs::create_directories(deep);
    fs::copy_file(TAV_PLATFORM_PROBE, deep + "/tool");

    EXPECT_THAT(outputOf(deep + "/tool"), HasSubstr("path=" + deep + "/tool\n"));
}

TEST_F(UserDataFolder, IsTheOneOfTheBaseDirectories)
{
    const ScopedEnvironment data("XDG_DATA_HOME", "/data/of/user//");

    EXPECT_EQ(FileSystemManagement::getUserAppDataDirectory(), "/data/of/user");
}

TEST_F(UserDataFolder, MayBeTheRootOfAllFolders)
{
    for (const char* root : {"/", "//"}) {
        const ScopedEnvironment data("XDG_DATA_HOME", root);

        EXPECT_EQ(FileSystemManagement::getUserAppDataDirectory(), "/") << root;
    }
}

TEST_F(UserDataFolder, LiesInTheHomeFolderOtherwise)
{
    for (const std::optional<std::string>& value :
         {std::optional<std::string>(), std::optional<std::string>(""),
          std::optional<std::string>("relative/path")}) {
        const ScopedEnvironment data("XDG_DATA_HOME", value);

        EXPECT_EQ(FileSystemManagement::getUserAppDataDirectory(), m_home.path() + "/.local/share");
    }
}

TEST_F(UserDataFolder, LiesInTheHomeFolderOfThePasswordDatabaseWithoutAnAbsoluteVariable)
{
    for (const std::optional<std::string>& value :
         {std::optional<std::string>(), std::optional<std::string>(""),
          std::optional<std::string>("relative/home")}) {
        const ScopedEnvironment home("HOME", value);
        toldHome = "/home/told/";

        EXPECT_EQ(FileSystemManagement::getUserAppDataDirectory(), "/home/told/.local/share");
    }
}

TEST_F(UserDataFolder, IsEmptyForAUserWithoutAHome)
{
    const ScopedEnvironment home("HOME", std::nullopt);

    EXPECT_EQ(FileSystemManagement::getUserAppDataDirectory(), "");
    EXPECT_EQ(FileSystemManagement::getUserDesktopFolder(), "");
}

TEST_F(UserDataFolder, IsEmptyForAUserWhoseHomeIsRelative)
{
    const ScopedEnvironment home("HOME", "relative/home");
    toldHome = "relative/too";

    EXPECT_EQ(FileSystemManagement::getUserAppDataDirectory(), "");
    EXPECT_EQ(FileSystemManagement::getUserDesktopFolder(), "");
}

TEST_F(UserDataFolder, IsNotCreated)
{
    EXPECT_FALSE(fs::exists(FileSystemManagement::getUserAppDataDirectory()));
}

TEST_F(UserDataFolder, HasAtMost2048Bytes)
{
    const std::string longest = "/" + std::string(2047, 'x');
    const ScopedEnvironment fitting("XDG_DATA_HOME", longest);
    EXPECT_EQ(FileSystemManagement::getUserAppDataDirectory(), longest);

    const ScopedEnvironment tooLong("XDG_DATA_HOME", longest + "x");
    EXPECT_EQ(FileSystemManagement::getUserAppDataDirectory(), "");
}

TEST_F(CommonDataFolder, IsTheSystems)
{
    EXPECT_EQ(FileSystemManagement::getCommonAppDataDirectory(), "/var/lib");

    const ScopedEnvironment common("TAV_COMMON_DATA_DIR", "");
    EXPECT_EQ(FileSystemManagement::getCommonAppDataDirectory(), "/var/lib");
}

TEST_F(CommonDataFolder, IsReplacedForTestsAndTrials)
{
    const ScopedEnvironment common("TAV_COMMON_DATA_DIR", "/trial/");

    EXPECT_EQ(FileSystemManagement::getCommonAppDataDirectory(), "/trial");
}

TEST_F(CommonDataFolder, IsNotReplacedByARelativePath)
{
    for (const char* value : {"trial", "./trial", "../trial"}) {
        const ScopedEnvironment common("TAV_COMMON_DATA_DIR", value);

        EXPECT_EQ(FileSystemManagement::getCommonAppDataDirectory(), "/var/lib") << value;
    }
}

TEST_F(CommonDataFolder, HasAtMost2048Bytes)
{
    const std::string longest = "/" + std::string(2047, 'x');
    const ScopedEnvironment fitting("TAV_COMMON_DATA_DIR", longest);
    EXPECT_EQ(FileSystemManagement::getCommonAppDataDirectory(), longest);

    const ScopedEnvironment tooLong("TAV_COMMON_DATA_DIR", longest + "x");
    EXPECT_EQ(FileSystemManagement::getCommonAppDataDirectory(), "");
}

TEST_F(CommonDataFolder, IsNotReplacedInASecureProcess)
{
    const ScopedEnvironment common("TAV_COMMON_DATA_DIR", "/trial");
    toldSecure = true;

    EXPECT_EQ(FileSystemManagement::getCommonAppDataDirectory(), "/var/lib");
}

// An ordinary user can make nobody else the owner: his program has no other rights than his own.
// Nor has any where the file system or the process forbids it.
TEST_F(CommonDataFolder, IsNotReplacedInAProgramThatRunsAsItsOwner)
{
    const ScopedEnvironment common("TAV_COMMON_DATA_DIR", "/trial");
    const std::string program = m_home.file("tool");
    fs::copy_file(TAV_PLATFORM_PROBE, program);
    constexpr uid_t owner = 1234;
    const bool isRoot = geteuid() == 0;
    const bool runsAsOwner = isRoot && runsProgramsAsTheirOwner(m_home.path());
    ASSERT_EQ(isRoot ? chown(program.c_str(), owner, owner) : 0, 0);
    ASSERT_EQ(chmod(program.c_str(), 04755), 0);
    ASSERT_EQ(chmod(m_home.path().c_str(), 0755), 0);

    const std::string expected = runsAsOwner ? "common=/var/lib\n" : "common=/trial\n";
    EXPECT_TRUE(
        asOrdinaryUser([&] { return outputOf(program).find(expected) != std::string::npos; }));

    ASSERT_EQ(chmod(program.c_str(), 0755), 0);
    EXPECT_THAT(outputOf(program), HasSubstr("common=/trial\n"));
}

TEST_F(DesktopFolder, IsTheOneOfTheUsersSettings)
{
    writeUserDirectories("XDG_DOWNLOAD_DIR=\"$HOME/Down\"\nXDG_DESKTOP_DIR=\"$HOME/Bureau\"\n");

    EXPECT_EQ(FileSystemManagement::getUserDesktopFolder(), m_home.path() + "/Bureau");
}

TEST_F(DesktopFolder, LiesInTheHomeFolderWithoutSettings)
{
    EXPECT_EQ(FileSystemManagement::getUserDesktopFolder(), m_home.path() + "/Desktop");
}

TEST_F(DesktopFolder, IsFoundByTheBaseDirectoryOfTheSettings)
{
    const TemporaryFolder settings;
    settings.write("user-dirs.dirs", "XDG_DESKTOP_DIR=\"/desk\"\n");
    writeUserDirectories("XDG_DESKTOP_DIR=\"/another\"\n");
    const ScopedEnvironment config("XDG_CONFIG_HOME", settings.path() + "/");

    EXPECT_EQ(FileSystemManagement::getUserDesktopFolder(), "/desk");
}

TEST_F(DesktopFolder, IsFoundThroughALinkToTheSettings)
{
    m_home.write("dotfile", "XDG_DESKTOP_DIR=\"/desk\"\n");
    fs::create_symlink("../dotfile", m_home.file(".config/user-dirs.dirs"));

    EXPECT_EQ(FileSystemManagement::getUserDesktopFolder(), "/desk");
}

TEST_F(DesktopFolder, IsFoundWithoutWaitingForAFifo)
{
    ASSERT_EQ(mkfifo(m_home.file(".config/user-dirs.dirs").c_str(), 0600), 0);

    EXPECT_EQ(FileSystemManagement::getUserDesktopFolder(), m_home.path() + "/Desktop");
}

namespace {

struct Setting {
    std::string name;
    std::string lines;
    std::string desktop; // "~" for the home folder

    friend void PrintTo(const Setting& row, std::ostream* out) { *out << row.name; }
};

class DesktopSetting : public SystemFolderPaths, public testing::WithParamInterface<Setting> {};

} // namespace

TEST_P(DesktopSetting, NamesTheDesktopFolder)
{
    writeUserDirectories(GetParam().lines);

    std::string desktop = GetParam().desktop;
    if (desktop.starts_with('~'))
        desktop.replace(0, 1, m_home.path());
    EXPECT_EQ(FileSystemManagement::getUserDesktopFolder(), desktop);
}

INSTANTIATE_TEST_SUITE_P(
    Table, DesktopSetting,
    testing::Values(
        Setting{"Absolute", "XDG_DESKTOP_DIR=\"/desk/top\"\n", "/desk/top"},
        Setting{"WithoutLineEnd", "XDG_DESKTOP_DIR=\"/desk\"", "/desk"},
        Setting{"BlanksInFront", " \tXDG_DESKTOP_DIR=\"/desk\"\n", "/desk"},
        Setting{"SeparatorBehind", "XDG_DESKTOP_DIR=\"/desk/\"\n", "/desk"},
        Setting{"HomeItself", "XDG_DESKTOP_DIR=\"$HOME/\"\n", "~"},
        Setting{"HomeItselfWithoutSeparator", "XDG_DESKTOP_DIR=\"$HOME\"\n", "~"},
        Setting{"Escapes", "XDG_DESKTOP_DIR=\"/a\\\"b\\\\c\\$d\"\n", "/a\"b\\c$d"},
        Setting{"EscapeBeforeTheLastCharacter", "XDG_DESKTOP_DIR=\"/a\\b", "/ab"},
        Setting{"BackslashAtTheEnd", "XDG_DESKTOP_DIR=\"/a\\", "/a\\"},
        Setting{"Blank", "XDG_DESKTOP_DIR=\"$HOME/Mon bureau\"\n", "~/Mon bureau"},
        Setting{"LastCounts", "XDG_DESKTOP_DIR=\"/first\"\nXDG_DESKTOP_DIR=\"/last\"\n", "/last"},
        Setting{"Comment", "#XDG_DESKTOP_DIR=\"/desk\"\n", "~/Desktop"},
        Setting{"Relative", "XDG_DESKTOP_DIR=\"desk\"\n", "~/Desktop"},
        Setting{"OtherVariable", "XDG_DESKTOP_DIR=\"$HOMER/desk\"\n", "~/Desktop"},
        Setting{"Unquoted", "XDG_DESKTOP_DIR=/desk\n", "~/Desktop"},
        Setting{"OtherKey", "XDG_DESKTOP_DIRS=\"/desk\"\n", "~/Desktop"},
        Setting{"Empty", "", "~/Desktop"}, Setting{"BlanksOnly", "  \n\n", "~/Desktop"}),
    [](const auto& row) { return row.param.name; });
