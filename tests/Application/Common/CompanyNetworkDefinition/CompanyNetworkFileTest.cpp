#include "CompanyNetworkFile.h"

#include "SmallStack.h"

#include <string>

using namespace std::string_literals;

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

TEST_F(CompanyNetworkFile, KeyWithAFullStopIsWrittenOverTheSectionThatItNames)
{
    folder.write(
        FILE_NAME, fileBegin + network("Company1", "one") +
                       "\t<key>Company1.Monitoring</key>\n"
                       "\t<dict>\n"
                       "\t</dict>\n" +
                       network("Company1.PublicVPN", "two") + fileEnd);
    CompanyNetworkConfiguration configuration(folder.path());
    configuration.getCompanyNetwork("one")->updatePublicVpn(true, "a", "b", "c", "d");

    configuration.writeDefinition(folder.path());

    EXPECT_EQ(configuration.getCompanyNetworkNameList(), (Names{"one", "", "two"}));
    EXPECT_EQ(
        content(), fileBegin +
                       "\t<key>Company1</key>\n"
                       "\t<dict>\n"
                       "\t\t<key>Monitoring</key>\n"
                       "\t\t<dict>\n"
                       "\t\t\t<key>Name</key>\n"
                       "\t\t\t<string></string>\n"
                       "\t\t</dict>\n"
                       "\t\t<key>Name</key>\n"
                       "\t\t<string>one</string>\n"
                       "\t\t<key>PublicVPN</key>\n"
                       "\t\t<dict>\n"
                       "\t\t\t<key>Name</key>\n"
                       "\t\t\t<string>two</string>\n"
                       "\t\t</dict>\n"
                       "\t</dict>\n" +
                       fileEnd);
}

TEST_F(CompanyNetworkFile, KeyWithAFullStopIsLostToANetworkAddedUnderItsFirstPart)
{
    folder.write(FILE_NAME, fileBegin + network("Company1.PublicVPN", "one") + fileEnd);
    CompanyNetworkConfiguration configuration(folder.path());
    configuration.addCompanyNetwork("two");

    configuration.writeDefinition(folder.path());

    EXPECT_EQ(configuration.getCompanyNetworkNameList(), (Names{"one", "two"}));
    EXPECT_EQ(content(), fileBegin + network("Company1", "two") + fileEnd);
}

TEST_F(CompanyNetworkFile, KeyWithAFullStopIsLostBehindATextThatItNames)
{
    folder.write(
        FILE_NAME,
        fileBegin + network("Company1", "one") + network("Company1.Name.x", "two") + fileEnd);
    const CompanyNetworkConfiguration configuration(folder.path());

    configuration.writeDefinition(folder.path());

    EXPECT_EQ(configuration.getCompanyNetworkNameList(), (Names{"one", "two"}));
    EXPECT_EQ(content(), fileBegin + network("Company1", "one") + fileEnd);
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

/// A network whose VPN section holds so many dictionaries, one inside the other.
static std::string nestedNetwork(int depth)
{
    std::string nested = "<key>Company1</key>\n<dict>\n<key>PublicVPN</key>\n<dict>\n";
    for (int level = 0; level < depth; ++level)
        nested += "<key>d</key>\n<dict>\n";
    return nested;
}

TEST_F(CompanyNetworkFile, MayNestAMillionDictionaries)
{
    folder.write(FILE_NAME, fileBegin + nestedNetwork(1000000));
    bool hasVpnSection = false;

    runOnSmallStack([&] {
        const CompanyNetworkConfiguration configuration(folder.path());
        hasVpnSection = configuration.getCompanyNetwork("")->getPublicVPN() != nullptr;
    });

    EXPECT_TRUE(hasVpnSection);
}

TEST_F(CompanyNetworkFile, NestedTooDeepToBeWrittenIsCopiedAndLeftAsItIs)
{
    const std::string nested = nestedNetwork(100000);
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
