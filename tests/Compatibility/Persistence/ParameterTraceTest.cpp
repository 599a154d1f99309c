#include "AppData.h"
#include "AppDataPersistence.h"
#include "BinaryAppDataPersistence.h"
#include "BinaryPersistenceManager.h"
#include "OwnedBytes.h"
#include "PersistenceManager.h"
#include "PrivateDataFolders.h"
#include "PublishedTracer.h"

#include <memory>
#include <regex>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

namespace {

/// The trace without the columns in front of each line.
std::string linesOf(const PublishedTracer& tracer)
{
    return std::regex_replace(tracer.lines(), std::regex("\\[<id>\\]\\[test +\\]"), "");
}

/// The same without the making of folders.
std::string linesOfStores(const PublishedTracer& tracer)
{
    return std::regex_replace(linesOf(tracer), std::regex(" *DataFolder::.*\n"), "");
}

} // namespace

TEST(ParameterTrace, NamesTextParameterThatIsNotFound)
{
    const PrivateDataFolders folders;
    AppDataPersistence store("scope", "domain", PERSISTENCE_CURRENT_USER);
    const PublishedTracer tracer;
    std::string value;

    store.readParam("100%s", value);

    EXPECT_THAT(tracer.lines(), HasSubstr(">> [D] Parameter '100%s' not found\n"));
}

TEST(ParameterTrace, NamesBinaryParameterThatIsNotFound)
{
    const PrivateDataFolders folders;
    BinaryAppDataPersistence store("scope", "domain", PERSISTENCE_CURRENT_USER);
    const PublishedTracer tracer;
    int size = 0;

    EXPECT_EQ(store.readUnformattedParam("100%s", size), nullptr);

    EXPECT_THAT(tracer.lines(), HasSubstr(">> [D] Parameter '100%s' not found\n"));
}

TEST(ParameterTrace, SaysNothingOfTextParameterThatIsFound)
{
    const PrivateDataFolders folders;
    AppDataPersistence store("scope", "domain", PERSISTENCE_CURRENT_USER);
    store.writeParam("a", "1");
    const PublishedTracer tracer;
    std::string value;

    store.readParam("a", value);

    EXPECT_THAT(tracer.lines(), HasSubstr("AppDataPersistence::readParam"));
    EXPECT_THAT(tracer.lines(), Not(HasSubstr("not found")));
}

TEST(ParameterTrace, SaysNothingOfBinaryParameterThatIsFound)
{
    const PrivateDataFolders folders;
    BinaryAppDataPersistence store("scope", "domain", PERSISTENCE_CURRENT_USER);
    store.writeUnformattedParam("a", "A", 1);
    const PublishedTracer tracer;
    int size = 0;

    const OwnedBytes bytes(store.readUnformattedParam("a", size));

    EXPECT_THAT(tracer.lines(), HasSubstr("BinaryAppDataPersistence::readUnformattedParam"));
    EXPECT_THAT(tracer.lines(), Not(HasSubstr("not found")));
}

TEST(ParameterTrace, ShowsEachCallOfAReadingInsideItsCaller)
{
    const PrivateDataFolders folders;
    AppData::setGlobalScope("scope");
    const AppData data("ShowsEachCallOfAReadingInsideItsCaller");
    data.writeParamForAllUsers("a", "1");
    const PublishedTracer tracer;
    std::string value;

    data.readParam("a", value);

    EXPECT_EQ(
        linesOf(tracer), "AppData::readParam\n"
                         "  AppDataManager::getInstance\n"
                         "  AppDataManager::readParam\n"
                         "    AppDataManager::getPersistence\n"
                         "      findOrMake\n"
                         "    PersistenceManager::readParam\n"
                         "      AppDataPersistence::readParam\n"
                         "        AppDataPersistence::readPersistenceFile\n"
                         "          ParameterText::parse\n"
                         "        >> [D] Parameter 'a' not found\n"
                         "    PersistenceManager::readParam\n"
                         "      AppDataPersistence::readParam\n"
                         "        AppDataPersistence::readPersistenceFile\n"
                         "          ParameterText::parse\n");
}

TEST(ParameterTrace, ShowsTheMakingAndTheEndOfATextStore)
{
    const PrivateDataFolders folders;
    const PublishedTracer tracer;

    std::make_unique<PersistenceManager>("scope", "domain", PERSISTENCE_CURRENT_USER).reset();

    EXPECT_EQ(
        linesOfStores(tracer), "PersistenceManager::constructor\n"
                               "  PersistenceManager::buildPersistence\n"
                               "    StringPersistence::constructor\n"
                               "    AppDataPersistence::getPersistenceFilePath\n"
                               "    AppDataPersistence::constructor\n"
                               "PersistenceManager::destructor\n"
                               "AppDataPersistence::destructor\n"
                               "StringPersistence::destructor\n");
}

TEST(ParameterTrace, ShowsTheMakingAndTheEndOfABinaryStore)
{
    const PrivateDataFolders folders;
    const PublishedTracer tracer;

    std::make_unique<BinaryPersistenceManager>("scope", "domain", PERSISTENCE_CURRENT_USER).reset();

    EXPECT_EQ(
        linesOfStores(tracer), "BinaryPersistenceManager::constructor\n"
                               "  BinaryPersistenceManager::buildPersistence\n"
                               "    BinaryPersistence::constructor\n"
                               "    BinaryAppDataPersistence::getPersistenceFilePath\n"
                               "    BinaryAppDataPersistence::constructor\n"
                               "BinaryPersistenceManager::destructor\n"
                               "BinaryAppDataPersistence::destructor\n"
                               "BinaryPersistence::destructor\n");
}

TEST(ParameterTrace, ShowsThatAStoreMakesItsFolder)
{
    const PrivateDataFolders folders;
    const PublishedTracer tracer;

    AppDataPersistence::getPersistenceFilePath("scope", "domain", PERSISTENCE_CURRENT_USER);

    EXPECT_THAT(
        linesOf(tracer),
        StartsWith("AppDataPersistence::getPersistenceFilePath\n  DataFolder::create\n"));
}
