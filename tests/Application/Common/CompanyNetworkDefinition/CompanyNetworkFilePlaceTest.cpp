#include "AppData.h"
#include "CompanyNetworkFile.h"
#include "OrdinaryUser.h"
#include "PrivateDataFolders.h"
#include "PublishedLogger.h"

#include <filesystem>

#include <gmock/gmock.h>
#include <sys/stat.h>

namespace fs = std::filesystem;
using testing::HasSubstr;
using testing::Not;

TEST_F(CompanyNetworkFile, ThatIsMissingOrBadLeavesTheListAsItWas)
{
    const TemporaryFolder missing;
    const TemporaryFolder bad;
    bad.write(FILE_NAME, "no property list");
    folder.write(FILE_NAME, fileBegin + network("Company1", "one") + fileEnd);
    CompanyNetworkConfiguration configuration(folder.path());
    const CompanyNetworkDefinition* const before = configuration.getCompanyNetwork("one");

    for (const TemporaryFolder* const second : {&missing, &bad}) {
        configuration.readConfiguration(second->path());

        EXPECT_EQ(configuration.getCompanyNetworkNameList(), Names{"one"});
        EXPECT_EQ(configuration.getCompanyNetwork("one"), before);
    }
}

TEST_F(CompanyNetworkFile, ReplacedVersionStaysBesideIt)
{
    folder.write(FILE_NAME, fileBegin + network("Company1", "one") + fileEnd);
    CompanyNetworkConfiguration configuration(folder.path());
    configuration.addCompanyNetwork("two");

    configuration.writeDefinition(folder.path());

    EXPECT_EQ(
        folder.read("CompanyNetworkConfiguration.cfg.bak"),
        fileBegin + network("Company1", "one") + fileEnd);
}

TEST_F(CompanyNetworkFile, FolderInItsPlaceIsAsNoFileAndStays)
{
    fs::create_directories(folder.file(FILE_NAME) + "/inside");

    EXPECT_TRUE(isReadAsNoFile());
    CompanyNetworkConfiguration configuration(folder.path());
    configuration.addCompanyNetwork("A");
    configuration.writeDefinition(folder.path());

    EXPECT_TRUE(fs::is_directory(folder.file(FILE_NAME) + "/inside"));
}

TEST_F(CompanyNetworkFile, FifoInItsPlaceIsAsNoFileAndDoesNotWait)
{
    ASSERT_EQ(mkfifo(folder.file(FILE_NAME).c_str(), 0600), 0);

    EXPECT_TRUE(isReadAsNoFile());
    CompanyNetworkConfiguration(folder.path()).writeDefinition(folder.path());

    EXPECT_TRUE(fs::is_fifo(folder.file(FILE_NAME)));
}

TEST_F(CompanyNetworkFile, ThatCannotBeReadIsAsNoFile)
{
    folder.write(FILE_NAME, fileBegin + network("Company1", "one") + fileEnd);
    fs::permissions(folder.path(), fs::perms{0755});

    EXPECT_TRUE(asOrdinaryUser([this] { return !isReadAsNoFile(); }));

    fs::permissions(folder.file(FILE_NAME), fs::perms{0});
    EXPECT_TRUE(asOrdinaryUser([this] { return isReadAsNoFile(); }));
}

TEST_F(CompanyNetworkFile, ThatCannotBeWrittenIsSilentlyLeftUnchanged)
{
    const std::string before = fileBegin + network("Company1", "one") + fileEnd;
    folder.write(FILE_NAME, before);
    fs::permissions(folder.file(FILE_NAME), fs::perms{0444});
    fs::permissions(folder.path(), fs::perms{0555});

    EXPECT_TRUE(asOrdinaryUser([this] {
        CompanyNetworkConfiguration configuration(folder.path());
        configuration.addCompanyNetwork("two");
        configuration.writeDefinition(folder.path());
        return true;
    }));
    fs::permissions(folder.path(), fs::perms{0755});

    EXPECT_EQ(content(), before);
}

TEST_F(CompanyNetworkFile, OfAMissingFolderIsNotWritten)
{
    CompanyNetworkConfiguration(folder.path()).writeDefinition(folder.file("missing"));

    EXPECT_TRUE(fs::is_empty(folder.path()));
}

TEST_F(CompanyNetworkFile, OfTheDefaultFolderIsWrittenWithTheFoldersThatAreMissing)
{
    const PrivateDataFolders folders;
    AppData::setGlobalScope("scope");
    CompanyNetworkConfiguration configuration("");
    configuration.addCompanyNetwork("one");

    configuration.writeDefinition("");

    EXPECT_EQ(
        folders.allUsers().read("Pelora/scope/CompanyNetworkConfiguration.cfg"),
        fileBegin + network("Company1", "one") + fileEnd);
    for (const char* made : {"Pelora", "Pelora/scope"}) {
        EXPECT_EQ(fs::status(folders.allUsers().file(made)).permissions(), fs::perms{0755}) << made;
    }
    EXPECT_EQ(CompanyNetworkConfiguration("").getCompanyNetworkNameList(), Names{"one"});
}

TEST_F(CompanyNetworkFile, OfANamedFolderMakesNoDefaultFolder)
{
    const PrivateDataFolders folders;

    CompanyNetworkConfiguration(folder.path()).writeDefinition(folder.path());

    EXPECT_EQ(content(), fileBegin + fileEnd);
    EXPECT_TRUE(fs::is_empty(folders.allUsers().path()));
    EXPECT_TRUE(fs::is_empty(folders.user().path()));
}

// The machine's own is out of reach of this program, so that no fault under test can change it.
TEST_F(CompanyNetworkFile, OfTheDefaultFolderIsNowhereUnlessATestGivesOne)
{
    const CompanyNetworkConfiguration configuration("");

    configuration.writeDefinition("");

    const std::string path = configuration.getConfigurationFile("");
    EXPECT_TRUE(path.starts_with("/dev/null/none/Pelora/")) << path;
    EXPECT_FALSE(fs::exists(path));
}

TEST_F(CompanyNetworkFile, OfADefaultFolderThatCannotBeMadeIsNotWritten)
{
    const ScopedEnvironment variable("TAV_COMMON_DATA_DIR", folder.write("file", "x"));
    AppData::setGlobalScope("scope");
    CompanyNetworkConfiguration configuration("");
    configuration.addCompanyNetwork("one");

    configuration.writeDefinition("");

    EXPECT_EQ(folder.read("file"), "x");
    EXPECT_TRUE(CompanyNetworkConfiguration("").empty());
}

TEST_F(CompanyNetworkFile, OfADefaultFolderThatTheUserMayNotMakeIsNotWrittenAndTheLogTellsSo)
{
    const ScopedEnvironment variable("TAV_COMMON_DATA_DIR", folder.path());
    AppData::setGlobalScope("scope");
    fs::permissions(folder.path(), fs::perms{0555});

    EXPECT_TRUE(asOrdinaryUser([this] {
        const PublishedLogger logger;
        CompanyNetworkConfiguration configuration("");
        configuration.addCompanyNetwork("one");
        configuration.writeDefinition("");
        EXPECT_THAT(
            logger.lines(), HasSubstr(
                                "[ERROR  ] Saving the dictionary to " + folder.path() +
                                "/Pelora/scope/" + FILE_NAME + " failed: "));
        return !HasFailure();
    }));

    EXPECT_TRUE(fs::is_empty(folder.path()));
}

TEST_F(CompanyNetworkFile, MissingIsTracedAsNoFile)
{
    EXPECT_TRUE(isReadAsNoFile());
}

TEST_F(CompanyNetworkFile, BadIsTracedWithItsPath)
{
    folder.write(FILE_NAME, "no property list");
    const PublishedTracer tracer;

    const CompanyNetworkConfiguration configuration(folder.path());

    EXPECT_THAT(
        tracer.lines(), HasSubstr(
                            ">> [W] Error parsing CompanyNetworkConfiguration file : '" +
                            folder.file(FILE_NAME) + "'\n"));
    EXPECT_THAT(tracer.lines(), Not(HasSubstr("No CompanyNetworkConfiguration file.")));
}

TEST_F(CompanyNetworkFile, MissingIsLoggedAsNoNetwork)
{
    const PublishedLogger logger;

    const CompanyNetworkConfiguration configuration(folder.path());

    EXPECT_EQ(logger.lines(), "[WARNING] No company netword defined.\n");
}

TEST_F(CompanyNetworkFile, BadIsLoggedAsNotParsed)
{
    folder.write(FILE_NAME, "no property list");
    const PublishedLogger logger;

    const CompanyNetworkConfiguration configuration(folder.path());

    EXPECT_EQ(logger.lines(), "[WARNING] Error parsing company network configuration file.\n");
}
