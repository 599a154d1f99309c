#include "OSManagement.h"

#include "ScopedEnvironment.h"

#include <cstdio>
#include <optional>
#include <ostream>
#include <regex>
#include <string>

#include <gtest/gtest.h>
#include <sys/utsname.h>

namespace {

// What the kernel calls itself in place of the truth; an empty text makes the question fail.
std::optional<std::string> toldRelease;

/// Lets the kernel call itself so for one scope.
class ToldRelease {
public:
    explicit ToldRelease(const std::string& release) { toldRelease = release; }
    ~ToldRelease() { toldRelease.reset(); }

    ToldRelease(const ToldRelease&) = delete;
    ToldRelease& operator=(const ToldRelease&) = delete;
};

} // namespace

// The linker leads every call of uname() here.
extern "C" int realUname(utsname* system) __asm__("__real_uname");
extern "C" int toldUname(utsname* system) __asm__("__wrap_uname");

extern "C" int toldUname(utsname* system)
{
    if (!toldRelease)
        return realUname(system);
    const bool fails = toldRelease->empty();
    std::snprintf(
        system->release, sizeof(system->release), "%s", fails ? "9.9.9" : toldRelease->c_str());
    return fails ? -1 : 0;
}

TEST(OSManagement, NamesTheSystemAndItsVersionFollowedByABlank)
{
    const ToldRelease release("6.1.27-18-amd64");

    EXPECT_EQ(OSManagement::getCurrentOS(), "Mac OS X 6.1.27 ");
}

TEST(OSManagement, TellsNameAndVersionApart)
{
    const ToldRelease release("6.1.27-18-amd64");
    std::string name = "former";
    std::string version = "former";

    OSManagement::getCurrentOS(name, version);

    EXPECT_EQ(name, "Mac OS X");
    EXPECT_EQ(version, "6.1.27");
    EXPECT_STREQ(gsc_MacOsX, "Mac OS X");
}

TEST(OSManagement, JoinsNameAndVersionByAnUnderscore)
{
    const ToldRelease release("6.1.27-18-amd64");

    EXPECT_EQ(OSManagement::getFullOSDescription(), "Mac OS X_6.1.27");
}

TEST(OSManagement, TakesTheVersionFromTheRunningKernel)
{
    utsname system{};
    ASSERT_EQ(uname(&system), 0);
    std::cmatch numbers;
    ASSERT_TRUE(std::regex_search(
        static_cast<const char*>(system.release), numbers, std::regex("^\\d+\\.\\d+\\.\\d+")));

    EXPECT_EQ(OSManagement::getCurrentOS(), "Mac OS X " + numbers.str() + " ");
}

namespace {

struct Release {
    std::string told;
    std::string version;

    friend void PrintTo(const Release& row, std::ostream* out) { *out << row.told; }
};

class KernelRelease : public testing::TestWithParam<Release> {};

} // namespace

TEST_P(KernelRelease, GivesThreeNumbers)
{
    const ToldRelease release(GetParam().told);
    std::string name;
    std::string version;

    OSManagement::getCurrentOS(name, version);

    EXPECT_EQ(version, GetParam().version);
}

INSTANTIATE_TEST_SUITE_P(
    Table, KernelRelease,
    testing::Values(
        Release{"6.1.0", "6.1.0"}, Release{"5.10", "5.10.0"}, Release{"5.10-rc1", "5.10.0"},
        Release{"4.19.300+", "4.19.300"}, Release{"6.1.2.3", "6.1.2"}, Release{"7", "7.0.0"},
        Release{"unknown", "0.0.0"}, Release{"", "0.0.0"},
        Release{"99999999999999999999.1.1", "0.0.0"}),
    [](const auto& row) { return "Row" + std::to_string(row.index); });

namespace {

struct Languages {
    std::string name;
    std::optional<std::string> language;
    std::optional<std::string> all;
    std::optional<std::string> messages;
    std::optional<std::string> lang;
    std::string expected;

    friend void PrintTo(const Languages& row, std::ostream* out) { *out << row.name; }
};

class UserLanguage : public testing::TestWithParam<Languages> {};

} // namespace

TEST_P(UserLanguage, IsTheFirstThatIsSet)
{
    const ScopedEnvironment language("LANGUAGE", GetParam().language);
    const ScopedEnvironment all("LC_ALL", GetParam().all);
    const ScopedEnvironment messages("LC_MESSAGES", GetParam().messages);
    const ScopedEnvironment lang("LANG", GetParam().lang);

    EXPECT_EQ(OSManagement::getUserUILanguage(), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    Table, UserLanguage,
    testing::Values(
        Languages{"FirstEntry", "fr_CH:de", "es_ES", "it_IT", "pt_PT", "fr"},
        Languages{"ListOfOne", "de", "es_ES", "it_IT", "pt_PT", "de"},
        Languages{"EmptyEntryInFront", ":de", "es_ES", {}, {}, "de"},
        Languages{"OnlyEmptyEntries", "::", "es_ES", {}, {}, "es"},
        Languages{"LcAll", {}, "es_ES.UTF-8", "it_IT", "pt_PT", "es"},
        Languages{"EmptyLanguage", "", "es_ES.UTF-8", "it_IT", "pt_PT", "es"},
        Languages{"LcMessages", {}, {}, "it_IT@euro", "pt_PT", "it"},
        Languages{"EmptyLcAll", {}, "", "it_IT", "pt_PT", "it"},
        Languages{"Lang", {}, {}, {}, "pt_PT.UTF-8", "pt"},
        Languages{"EmptyLcMessages", {}, {}, "", "pt_PT", "pt"},
        Languages{"None", {}, {}, {}, {}, "en"}, Languages{"AllEmpty", "", "", "", "", "en"},
        Languages{"C", {}, {}, {}, "C", "en"},
        Languages{"CWithCodeset", {}, {}, {}, "C.UTF-8", "en"},
        Languages{"Posix", {}, {}, {}, "POSIX", "en"},
        Languages{"PosixWithCodeset", {}, {}, {}, "POSIX.UTF-8", "en"},
        Languages{"CBeforeAnother", {}, "C", {}, "fr_FR", "en"},
        Languages{"CaseAsStored", {}, {}, {}, "FR_fr", "FR"},
        Languages{"ThreeLetters", {}, {}, {}, "ast_ES", "as"},
        Languages{"OneLetter", {}, {}, {}, "x", "en"},
        Languages{"FirstLetters", {}, {}, {}, "aA", "aA"},
        Languages{"LastLetters", {}, {}, {}, "zZ", "zZ"},
        Languages{"SecondIsNoLetter", {}, {}, {}, "f1_FR", "en"},
        Languages{"NotAscii", {}, {}, {}, "\xc3\xa9\xc3\xa9", "en"},
        Languages{"PathInstead", "../x", {}, {}, "fr_FR", "en"}),
    [](const testing::TestParamInfo<Languages>& row) { return row.param.name; });
