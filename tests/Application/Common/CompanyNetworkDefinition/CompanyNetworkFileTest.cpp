#include "AppData.h"
#include "CompanyNetworkConfiguration.h"
#include "OrdinaryUser.h"
#include "PrivateDataFolders.h"
#include "PublishedLogger.h"
#include "PublishedTracer.h"
#include "SmallStack.h"

#include <filesystem>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

namespace fs = std::filesystem;
using namespace std::string_literals;
using testing::HasSubstr;
using testing::Not;

namespace {

using Names = std::list<std::string>;

constexpr const char* FILE_NAME = "CompanyNetworkConfiguration.cfg";

const std::string fileBegin = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                              "<plist version=\"1.0\">\n"
                              "<dict>\n";
const std::string fileEnd = "</dict>\n"
                            "</plist>";

/// The lines of a network that has a display name only.
std::string network(const std::string& key, const std::string& name)
{
    return "\t<key>" + key +
           "</key>\n"
           "\t<dict>\n"
           "\t\t<key>Name</key>\n"
           "\t\t<string>" +
           name +
           "</string>\n"
           "\t</dict>\n";
}

class CompanyNetworkFile : public testing::Test {
protected:
    Names namesOf(const std::string& content) const
    {
        folder.write(FILE_NAME, content);
        return CompanyNetworkConfiguration(folder.path()).getCompanyNetworkNameList();
    }
    std::string content() const { return folder.read(FILE_NAME); }

    TemporaryFolder folder;
};

} // namespace

TEST_F(CompanyNetworkFile, HoldsANetworkPerDictionaryInByteOrderOfKeys)
{
    folder.write(
        FILE_NAME, fileBegin + network("Company2", "two") + network("Company10", "ten") +
                       network("Company1", "one") + network("other", "any key") + fileEnd);
    const CompanyNetworkConfiguration configuration(folder.path());

    EXPECT_EQ(configuration.getCompanyNetworkNameList(), (Names{"one", "ten", "two", "any key"}));
    EXPECT_EQ(configuration.getCompanyNetworkList().back()->getDictionnaryName(), "other");
}

TEST_F(CompanyNetworkFile, ReadsAFileOfAnEmptyRoot)
{
    EXPECT_EQ(namesOf(fileBegin + fileEnd), Names());
}

TEST_F(CompanyNetworkFile, ReadingAgainAppends)
{
    folder.write(FILE_NAME, fileBegin + network("Company1", "one") + fileEnd);
    CompanyNetworkConfiguration configuration(folder.path());

    configuration.readConfiguration(folder.path());

    EXPECT_EQ(configuration.getCompanyNetworkNameList(), (Names{"one", "one"}));
}

TEST_F(CompanyNetworkFile, IsWrittenWhole)
{
    CompanyNetworkConfiguration configuration(folder.path());
    CompanyNetworkDefinition* const added = configuration.addCompanyNetwork("Intranet");
    added->updatePublicVpn(true, "/bin/start", "-a \"b\"", "/bin/stop", "<&>");
    added->updateMonitoringConfiguration(false, "IP", "10.0.0.1");
    configuration.addCompanyNetwork("\xC3\xA9t\xC3\xA9");

    configuration.writeDefinition(folder.path());

    EXPECT_EQ(
        content(), "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                   "<plist version=\"1.0\">\n"
                   "<dict>\n"
                   "\t<key>Company1</key>\n"
                   "\t<dict>\n"
                   "\t\t<key>Monitoring</key>\n"
                   "\t\t<dict>\n"
                   "\t\t\t<key>Activated</key>\n"
                   "\t\t\t<string>false</string>\n"
                   "\t\t\t<key>Address</key>\n"
                   "\t\t\t<string>10.0.0.1</string>\n"
                   "\t\t\t<key>Type</key>\n"
                   "\t\t\t<string>IP</string>\n"
                   "\t\t</dict>\n"
                   "\t\t<key>Name</key>\n"
                   "\t\t<string>Intranet</string>\n"
                   "\t\t<key>PublicVPN</key>\n"
                   "\t\t<dict>\n"
                   "\t\t\t<key>Activated</key>\n"
                   "\t\t\t<string>true</string>\n"
                   "\t\t\t<key>StartArguments</key>\n"
                   "\t\t\t<string>-a \"b\"</string>\n"
                   "\t\t\t<key>StartCommandLine</key>\n"
                   "\t\t\t<string>/bin/start</string>\n"
                   "\t\t\t<key>StopArguments</key>\n"
                   "\t\t\t<string><&></string>\n"
                   "\t\t\t<key>StopCommandLine</key>\n"
                   "\t\t\t<string>/bin/stop</string>\n"
                   "\t\t</dict>\n"
                   "\t</dict>\n"
                   "\t<key>Company2</key>\n"
                   "\t<dict>\n"
                   "\t\t<key>Name</key>\n"
                   "\t\t<string>\xC3\xA9t\xC3\xA9</string>\n"
                   "\t</dict>\n"
                   "</dict>\n"
                   "</plist>");
}

TEST_F(CompanyNetworkFile, OfNoNetworkIsAnEmptyRoot)
{
    CompanyNetworkConfiguration(folder.path()).writeDefinition(folder.path());

    EXPECT_EQ(content(), fileBegin + fileEnd);
}

TEST_F(CompanyNetworkFile, IsReadBackAsItWasWritten)
{
    CompanyNetworkConfiguration configuration(folder.path());
    configuration.addCompanyNetwork("A")->createEmptyCompany();
    configuration.addCompanyNetwork("B")->updateDedicatedApn(
        "apn", true, "login", "password", "1.1.1.1", "2.2.2.2", "proxy", "8080");
    configuration.writeDefinition(folder.path());
    const std::string written = content();

    CompanyNetworkConfiguration again(folder.path());
    again.writeDefinition(folder.path());

    EXPECT_EQ(again.getCompanyNetworkNameList(), (Names{"A", "B"}));
    EXPECT_EQ(content(), written);
}

TEST_F(CompanyNetworkFile, LosesItsDeletedNetworks)
{
    folder.write(
        FILE_NAME, fileBegin + network("Company1", "A") + network("Company2", "B") + fileEnd);
    CompanyNetworkConfiguration configuration(folder.path());

    configuration.deleteCompanyNetwork("A");
    configuration.writeDefinition(folder.path());

    EXPECT_EQ(content(), fileBegin + network("Company2", "B") + fileEnd);
}

TEST_F(CompanyNetworkFile, RootEntriesThatAreNoDictionariesAreSkippedAndVanish)
{
    folder.write(
        FILE_NAME, fileBegin +
                       "\t<key>Aaa</key>\n\t<string>text</string>\n"
                       "\t<key>Bbb</key>\n<int>5</int>\n" +
                       network("Company1", "one") + "\t<key>Zzz</key>\n\t<string>text</string>\n" +
                       fileEnd);
    const CompanyNetworkConfiguration configuration(folder.path());

    configuration.writeDefinition(folder.path());

    EXPECT_EQ(configuration.getCompanyNetworkNameList(), Names{"one"});
    EXPECT_EQ(content(), fileBegin + network("Company1", "one") + fileEnd);
}

TEST_F(CompanyNetworkFile, EntriesOfANetworkThatItDoesNotKnowVanish)
{
    folder.write(
        FILE_NAME, fileBegin +
                       "\t<key>Company1</key>\n"
                       "\t<dict>\n"
                       "\t\t<key>Comment</key>\n"
                       "\t\t<string>text</string>\n"
                       "\t\t<key>Name</key>\n"
                       "\t\t<string>one</string>\n"
                       "\t</dict>\n" +
                       fileEnd);

    CompanyNetworkConfiguration(folder.path()).writeDefinition(folder.path());

    EXPECT_EQ(content(), fileBegin + network("Company1", "one") + fileEnd);
}

TEST_F(CompanyNetworkFile, KeyWithAFullStopIsWrittenOneLevelDeeper)
{
    folder.write(FILE_NAME, fileBegin + network("Company.1", "one") + fileEnd);

    CompanyNetworkConfiguration(folder.path()).writeDefinition(folder.path());

    EXPECT_EQ(
        content(), fileBegin +
                       "\t<key>Company</key>\n"
                       "\t<dict>\n"
                       "\t\t<key>1</key>\n"
                       "\t\t<dict>\n"
                       "\t\t\t<key>Name</key>\n"
                       "\t\t\t<string>one</string>\n"
                       "\t\t</dict>\n"
                       "\t</dict>\n" +
                       fileEnd);
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

TEST_F(CompanyNetworkFile, WithAWrongHeaderHasNoNetwork)
{
    const std::string rest = "<dict>\n" + network("Company1", "one") + fileEnd;

    EXPECT_EQ(namesOf("<plist version=\"1.0\">\n" + rest), Names());
    EXPECT_EQ(namesOf("\n<?xml?>\n<plist version=\"1.0\">\n" + rest), Names());
    EXPECT_EQ(namesOf("<?xml?>\n<plist version=\"2.0\">\n" + rest), Names());
    EXPECT_EQ(namesOf("<?xml?>\n" + rest), Names());
    EXPECT_EQ(namesOf("<?xml?><plist version=\"1.0\">\n" + rest), Names());
    EXPECT_EQ(namesOf(""), Names());
    EXPECT_EQ(namesOf("<?xml?>\n<plist version=\"1.0\">\n" + rest), Names{"one"});
}

TEST_F(CompanyNetworkFile, KeepsNetworksAheadOfAnEmptyLine)
{
    EXPECT_EQ(
        namesOf(
            fileBegin + network("Company1", "one") + "\n" + network("Company2", "two") + fileEnd),
        Names{"one"});
}

TEST_F(CompanyNetworkFile, KeepsNetworksAheadOfANulByte)
{
    EXPECT_EQ(
        namesOf(
            fileBegin + network("Company1", "one") + "\0"s + network("Company2", "two") + fileEnd),
        Names{"one"});
}

TEST_F(CompanyNetworkFile, KeepsCarriageReturnsInValues)
{
    EXPECT_EQ(namesOf(fileBegin + network("Company1", "one\r") + fileEnd), Names{"one\r"});
}

TEST_F(CompanyNetworkFile, SkipsEntriesOfUnknownTags)
{
    EXPECT_EQ(
        namesOf(fileBegin + "\t<key>A</key>\n\t<true/>\n" + network("Company1", "one") + fileEnd),
        Names{"one"});
}

TEST_F(CompanyNetworkFile, ToleratesMissingClosingTags)
{
    EXPECT_EQ(
        namesOf(
            fileBegin + "\t<key>Company1</key>\n"
                        "\t<dict>\n"
                        "\t\t<key>Name\n"
                        "\t\t<string>one\n"),
        Names{"one"});
}

TEST_F(CompanyNetworkFile, TakesTheLaterOfTwoNetworksUnderOneKey)
{
    EXPECT_EQ(
        namesOf(fileBegin + network("Company1", "one") + network("Company1", "two") + fileEnd),
        Names{"two"});
}

TEST_F(CompanyNetworkFile, FolderInItsPlaceIsAsNoFileAndStays)
{
    fs::create_directories(folder.file(FILE_NAME) + "/inside");
    CompanyNetworkConfiguration configuration(folder.path());
    configuration.addCompanyNetwork("A");

    configuration.writeDefinition(folder.path());

    EXPECT_TRUE(fs::is_directory(folder.file(FILE_NAME) + "/inside"));
}

TEST_F(CompanyNetworkFile, FifoInItsPlaceIsAsNoFileAndDoesNotWait)
{
    ASSERT_EQ(mkfifo(folder.file(FILE_NAME).c_str(), 0600), 0);

    CompanyNetworkConfiguration configuration(folder.path());
    configuration.writeDefinition(folder.path());

    EXPECT_TRUE(configuration.empty());
    EXPECT_TRUE(fs::is_fifo(folder.file(FILE_NAME)));
}

TEST_F(CompanyNetworkFile, ThatCannotBeReadIsAsNoFile)
{
    folder.write(FILE_NAME, fileBegin + network("Company1", "one") + fileEnd);
    fs::permissions(folder.path(), fs::perms{0755});

    EXPECT_TRUE(
        asOrdinaryUser([this] { return !CompanyNetworkConfiguration(folder.path()).empty(); }));

    fs::permissions(folder.file(FILE_NAME), fs::perms{0});
    EXPECT_TRUE(
        asOrdinaryUser([this] { return CompanyNetworkConfiguration(folder.path()).empty(); }));
}

TEST_F(CompanyNetworkFile, ThatCannotBeWrittenIsSilentlyLeftUnchanged)
{
    const std::string before = fileBegin + network("Company1", "one") + fileEnd;
    folder.write(FILE_NAME, before);
    fs::permissions(folder.path(), fs::perms{0755});

    EXPECT_TRUE(asOrdinaryUser([this] {
        CompanyNetworkConfiguration configuration(folder.path());
        configuration.addCompanyNetwork("two");
        configuration.writeDefinition(folder.path());
        return true;
    }));

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

TEST_F(CompanyNetworkFile, MayNestDictionariesDeeperThanAnyCallStack)
{
    constexpr int depth = 100000;
    std::string nested = "<key>Company1</key>\n<dict>\n<key>PublicVPN</key>\n<dict>\n";
    for (int level = 0; level < depth; ++level)
        nested += "<key>d</key>\n<dict>\n";
    folder.write(FILE_NAME, fileBegin + nested);
    std::size_t networks = 0;

    runOnSmallStack([&] {
        CompanyNetworkConfiguration configuration(folder.path());
        configuration.addCompanyNetwork(*configuration.getCompanyNetwork(""));
        networks = configuration.getCompanyNetworkList().size();
        configuration.writeDefinition(folder.path());
    });

    EXPECT_EQ(networks, 2U);
    EXPECT_EQ(content(), fileBegin + nested) << "too deep to be written";
}

TEST_F(CompanyNetworkFile, MissingIsTracedAsNoFile)
{
    const PublishedTracer tracer;

    const CompanyNetworkConfiguration configuration(folder.path());

    EXPECT_THAT(tracer.lines(), HasSubstr(">> [D] No CompanyNetworkConfiguration file.\n"));
    EXPECT_THAT(tracer.lines(), Not(HasSubstr("Error parsing")));
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

    EXPECT_THAT(logger.lines(), HasSubstr("No company netword defined.\n"));
}

TEST_F(CompanyNetworkFile, BadIsLoggedAsNotParsed)
{
    folder.write(FILE_NAME, "no property list");
    const PublishedLogger logger;

    const CompanyNetworkConfiguration configuration(folder.path());

    EXPECT_THAT(logger.lines(), HasSubstr("Error parsing company network configuration file.\n"));
}
