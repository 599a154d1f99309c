#include "CompanyNetworkConfiguration.h"

#include "AppData.h"
#include "KFCompanyNetworkNotFoundException.h"
#include "PrivateDataFolders.h"
#include "PublishedTracer.h"
#include "VirtualSlot.h"

#include <memory>
#include <ostream>
#include <type_traits>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testing::HasSubstr;
using testing::Not;

namespace {

using Names = std::list<std::string>;

/// A configuration without a file.
class CompanyNetworkConfigurationTest : public testing::Test {
protected:
    Names dictionaryNames() const
    {
        Names names;
        for (const CompanyNetworkDefinition* network : configuration.getCompanyNetworkList())
            names.push_back(network->getDictionnaryName());
        return names;
    }

    TemporaryFolder folder;
    CompanyNetworkConfiguration configuration{folder.path()};
};

struct FolderAndFile {
    const char* folder;
    const char* file;

    friend void PrintTo(const FolderAndFile& row, std::ostream* out) { *out << row.folder; }
};

class ConfigurationFile : public testing::TestWithParam<FolderAndFile> {};

} // namespace

TEST_P(ConfigurationFile, IsInTheFolder)
{
    const TemporaryFolder empty;
    const CompanyNetworkConfiguration configuration(empty.path());

    EXPECT_EQ(configuration.getConfigurationFile(GetParam().folder), GetParam().file);
}

INSTANTIATE_TEST_SUITE_P(
    Folders, ConfigurationFile,
    testing::Values(
        FolderAndFile{"/tmp", "/tmp/CompanyNetworkConfiguration.cfg"},
        FolderAndFile{"/tmp/", "/tmp/CompanyNetworkConfiguration.cfg"},
        FolderAndFile{"/tmp//", "/tmp/CompanyNetworkConfiguration.cfg"},
        FolderAndFile{"/tmp///", "/tmp//CompanyNetworkConfiguration.cfg"},
        FolderAndFile{"ab//", "ab/CompanyNetworkConfiguration.cfg"},
        FolderAndFile{"a//", "a//CompanyNetworkConfiguration.cfg"},
        FolderAndFile{"/", "/CompanyNetworkConfiguration.cfg"},
        FolderAndFile{"a", "a/CompanyNetworkConfiguration.cfg"},
        FolderAndFile{"/a/", "/a/CompanyNetworkConfiguration.cfg"},
        FolderAndFile{"ab/", "ab/CompanyNetworkConfiguration.cfg"},
        FolderAndFile{"///", "///CompanyNetworkConfiguration.cfg"}));

TEST_F(CompanyNetworkConfigurationTest, FileOfTheEmptyFolderIsInTheAllUsersDataFolder)
{
    const PrivateDataFolders folders;
    AppData::setGlobalScope("scope");

    EXPECT_EQ(
        configuration.getConfigurationFile(""),
        folders.allUsers().path() + "/Pelora/scope/CompanyNetworkConfiguration.cfg");
}

TEST(CompanyNetworkConfiguration, HasNoVirtualOperationButItsDestructor)
{
    static_assert(std::has_virtual_destructor_v<CompanyNetworkConfiguration>);

    EXPECT_FALSE(isVirtualOperation(&CompanyNetworkConfiguration::readConfiguration));
    EXPECT_FALSE(isVirtualOperation(&CompanyNetworkConfiguration::getCompanyNetwork));
    EXPECT_FALSE(isVirtualOperation(&CompanyNetworkConfiguration::writeDefinition));
}

TEST_F(CompanyNetworkConfigurationTest, StartsEmptyWithoutAFile)
{
    EXPECT_TRUE(configuration.empty());
    EXPECT_TRUE(configuration.getCompanyNetworkList().empty());
    EXPECT_EQ(configuration.getCompanyNetworkNameList(), Names());
}

TEST_F(CompanyNetworkConfigurationTest, HasNoNetworkOfAnyNameWhenItIsEmpty)
{
    EXPECT_EQ(configuration.getCompanyNetwork(""), nullptr);
    EXPECT_EQ(configuration.getCompanyNetwork("any"), nullptr);
}

TEST_F(CompanyNetworkConfigurationTest, AddedNetworkHasADisplayNameAndNothingElse)
{
    const CompanyNetworkDefinition* const added = configuration.addCompanyNetwork("Intranet");

    EXPECT_FALSE(configuration.empty());
    EXPECT_EQ(
        configuration.getCompanyNetworkList(), std::list{configuration.getCompanyNetwork("")});
    EXPECT_EQ(added, configuration.getCompanyNetwork("Intranet"));
    EXPECT_EQ(added->getDictionnaryName(), "Company1");
    EXPECT_EQ(
        added->getDictionary()->marshall(""), "<dict>\n"
                                              "\t<key>Name</key>\n"
                                              "\t<string>Intranet</string>\n"
                                              "</dict>\n");
}

TEST_F(CompanyNetworkConfigurationTest, AddedCopyHasANameOfItsOwn)
{
    CompanyNetworkDefinition* const first = configuration.addCompanyNetwork("Intranet");
    first->updatePublicVpn(true, "a", "b", "c", "d");

    CompanyNetworkDefinition* const copy = configuration.addCompanyNetwork(*first);
    first->getPublicVPN()->setStartCmdLine("changed");

    EXPECT_NE(copy, first);
    EXPECT_EQ(copy->getDictionnaryName(), "Company2");
    EXPECT_EQ(copy->getCompanyName(), "Intranet");
    EXPECT_EQ(copy->getPublicVPN()->getStartCmdLine(), "a");
}

TEST_F(CompanyNetworkConfigurationTest, ListsNetworksInOrderOfAddition)
{
    configuration.addCompanyNetwork("Z");
    configuration.addCompanyNetwork("A");
    configuration.addCompanyNetwork("Z");

    EXPECT_EQ(configuration.getCompanyNetworkNameList(), (Names{"Z", "A", "Z"}));
    EXPECT_EQ(dictionaryNames(), (Names{"Company1", "Company2", "Company3"}));
}

TEST_F(CompanyNetworkConfigurationTest, FindsTheFirstNetworkForAnEmptyName)
{
    CompanyNetworkDefinition* const first = configuration.addCompanyNetwork("A");
    configuration.addCompanyNetwork("");

    EXPECT_EQ(configuration.getCompanyNetwork(""), first);
}

TEST_F(CompanyNetworkConfigurationTest, FindsTheFirstNetworkOfADisplayNameExactly)
{
    configuration.addCompanyNetwork("a");
    CompanyNetworkDefinition* const first = configuration.addCompanyNetwork("A");
    configuration.addCompanyNetwork("A");

    EXPECT_EQ(configuration.getCompanyNetwork("A"), first);
}

TEST_F(CompanyNetworkConfigurationTest, ThrowsForAnUnknownDisplayName)
{
    configuration.addCompanyNetwork("A");

    try {
        configuration.getCompanyNetwork("Company1");
        FAIL() << "the network's key is no display name";
    } catch (const KFCompanyNetworkNotFoundException& exception) {
        EXPECT_EQ(
            exception.toString(),
            "Company Network Not Found Exception : COMPANY_NOT_FOUND on file "
            "Application/Common/CompanyNetworkDefinition/src/CompanyNetworkConfiguration at line "
            "94");
    }
}

TEST_F(CompanyNetworkConfigurationTest, DeletesEveryNetworkOfADisplayName)
{
    configuration.addCompanyNetwork("A");
    configuration.addCompanyNetwork("B");
    configuration.addCompanyNetwork("A");

    configuration.deleteCompanyNetwork("A");
    EXPECT_EQ(configuration.getCompanyNetworkNameList(), Names{"B"});

    configuration.deleteCompanyNetwork("unknown");
    EXPECT_EQ(configuration.getCompanyNetworkNameList(), Names{"B"});
}

TEST_F(CompanyNetworkConfigurationTest, DeletedNetworkStaysUsable)
{
    CompanyNetworkDefinition* const network = configuration.addCompanyNetwork("A");

    configuration.deleteCompanyNetwork(network->getCompanyName());
    network->updatePublicVpn(true, "a", "b", "c", "d");

    EXPECT_TRUE(configuration.empty());
    EXPECT_EQ(network->getCompanyName(), "A");
    EXPECT_TRUE(network->hasPublicVPN());
}

TEST_F(CompanyNetworkConfigurationTest, DeletedNetworkIsDestroyedOnlyWithItsConfiguration)
{
    auto owner = std::make_unique<CompanyNetworkConfiguration>(folder.path());
    owner->addCompanyNetwork("A");
    const PublishedTracer tracer;
    const std::string destroyed = "CompanyNetworkDefinition::destructor\n";

    owner->deleteCompanyNetwork("A");

    EXPECT_THAT(tracer.lines(), Not(HasSubstr(destroyed)));
    owner.reset();
    EXPECT_THAT(tracer.lines(), HasSubstr(destroyed));
}

TEST_F(CompanyNetworkConfigurationTest, HandsOutItsListAndNoCopyOfIt)
{
    const std::list<CompanyNetworkDefinition*>& list = configuration.getCompanyNetworkList();

    CompanyNetworkDefinition* const added = configuration.addCompanyNetwork("A");

    EXPECT_EQ(list, std::list{added});
}

TEST_F(CompanyNetworkConfigurationTest, FreeNameIsTheFirstGap)
{
    EXPECT_EQ(configuration.createAvailableCompanyNetworkDicName(), "Company1");

    configuration.addCompanyNetwork("first");
    configuration.addCompanyNetwork("second");
    configuration.addCompanyNetwork("third");
    EXPECT_EQ(configuration.createAvailableCompanyNetworkDicName(), "Company4");

    configuration.deleteCompanyNetwork("second");
    EXPECT_EQ(configuration.createAvailableCompanyNetworkDicName(), "Company2");

    configuration.deleteCompanyNetwork("first");
    EXPECT_EQ(configuration.createAvailableCompanyNetworkDicName(), "Company1");
}

TEST_F(CompanyNetworkConfigurationTest, FreeNameHasNoUpperBound)
{
    for (int number = 0; number < 120; ++number)
        configuration.addCompanyNetwork("A");

    EXPECT_EQ(configuration.createAvailableCompanyNetworkDicName(), "Company121");
}

TEST_F(CompanyNetworkConfigurationTest, DisplayNamesTakeNoFreeName)
{
    configuration.addCompanyNetwork("Company2");

    EXPECT_EQ(configuration.createAvailableCompanyNetworkDicName(), "Company2");
}
