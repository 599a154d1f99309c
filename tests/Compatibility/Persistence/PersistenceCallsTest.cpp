#include "AppData.h"
#include "AppDataManager.h"
#include "AppDataPersistence.h"
#include "BinaryAppDataPersistence.h"
#include "OwnedBytes.h"
#include "ParameterText.h"
#include "PrivateDataFolders.h"
#include "PublishedTracer.h"

#include <filesystem>
#include <iostream>
#include <memory>
#include <ostream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testing::AllOf;
using testing::ExitedWithCode;
using testing::HasSubstr;

namespace {

void useTexts(const AppData& data)
{
    std::string value;
    data.writeParam("a", "1");
    data.writeParamForAllUsers("b", "2");
    data.readParam("b", value);
    ParameterText::isStorable("a", "1");
}

void useBytes(const AppData& data)
{
    int size = 0;
    data.writeUnformattedParam("a", "A", 1);
    data.writeUnformattedParamForAllUsers("b", "B", 1);
    const OwnedBytes bytes(data.readUnformattedParam("b", size));
    t_Param parameter("a", "A", 1);
    parameter = t_Param(parameter);
}

/// A folder in the place of the texts, and a broken record at the end of the bytes.
void useFilesThatAreOdd(const PrivateDataFolders& folders, const AppData& data)
{
    std::filesystem::remove(folders.user().file("Pelora/scope/calls.dat"));
    std::filesystem::create_directory(folders.user().file("Pelora/scope/calls.dat"));
    folders.user().write("Pelora/scope/calls_binary.dat", "x");
    data.writeParam("a", "1");
    data.writeUnformattedParam("a", "A", 1);
}

/// The trace of a run through every operation, with the columns of the objects.
std::string traceOfEverything()
{
    const PrivateDataFolders folders;
    PublishedTracer tracer;
    tracer->setPrintObjects(true);
    AppData::setGlobalScope("scope");
    {
        const AppData data("calls");
        data.createAllUsersDataFolder();
        data.getAllUsersDataPath();
        data.getPathForFile("file");
        data.getFiles();
        useTexts(data);
        useBytes(data);
        useFilesThatAreOdd(folders, data);
        data.removeData();
        const PersistenceManager texts("scope", "calls", PERSISTENCE_CURRENT_USER);
        const BinaryPersistenceManager bytes("scope", "calls", PERSISTENCE_CURRENT_USER);
    }
    AppData::removeAllData("scope");
    return tracer.lines();
}

/// Where the text of a call is followed by the end of its line, with the columns in front of it.
bool isTraced(const std::string& columns, const std::string& call)
{
    static const std::string trace = traceOfEverything();
    return std::regex_search(trace, std::regex(columns + " *" + call + "\n"));
}

const std::string noObject = "\\[     \\]\\[          \\]";
const std::string anObject = "\\[     \\]\\[0x[0-9a-f]+ *\\]";
const std::string aCount = "\\[-?[0-9]+ *\\]\\[0x[0-9a-f]+ *\\]";

using FreeCalls = testing::TestWithParam<const char*>;
using MethodCalls = testing::TestWithParam<const char*>;
using CountedCalls = testing::TestWithParam<const char*>;

TEST_P(FreeCalls, AreMarkedWithoutAnObject)
{
    EXPECT_TRUE(isTraced(noObject, GetParam())) << GetParam();
}

TEST_P(MethodCalls, AreMarkedWithTheirObject)
{
    EXPECT_TRUE(isTraced(anObject, GetParam())) << GetParam();
}

TEST_P(CountedCalls, AreMarkedWithTheCountOfTheirClass)
{
    EXPECT_TRUE(isTraced(aCount, GetParam())) << GetParam();
}

INSTANTIATE_TEST_SUITE_P(
    Persistence, FreeCalls,
    testing::Values(
        "AppData::removeAllData", "AppData::setGlobalScope", "AppDataManager::getInstance",
        "AppDataPersistence::getPersistenceFilePath", "BinaryPersistenceManager::buildPersistence",
        "DataFolder::create", "DataFolder::getBase", "DataFolder::getPath",
        "DataFolder::makeMissing", "ParameterFile::logUnreadable", "ParameterFile::replace",
        "ParameterRecords::parse", "ParameterRecords::takeAll", "ParameterRecords::toBytes",
        "ParameterText::isStorable", "ParameterText::parse", "PersistenceManager::buildPersistence",
        "addFiles", "appendNumber", "deleteIfThere", "findOrMake", "t_Param::unMarshall",
        "takeBlock"));

INSTANTIATE_TEST_SUITE_P(
    AppData, MethodCalls,
    testing::Values(
        "AppData::createAllUsersDataFolder", "AppData::getAllUsersDataPath", "AppData::getFiles",
        "AppData::getPathForFile", "AppData::readParam", "AppData::readUnformattedParam",
        "AppData::removeData", "AppData::writeParam", "AppData::writeParamForAllUsers",
        "AppData::writeUnformattedParam", "AppData::writeUnformattedParamForAllUsers"));

INSTANTIATE_TEST_SUITE_P(
    AppDataManager, MethodCalls,
    testing::Values(
        "AppDataManager::createAllUsersDataFolder", "AppDataManager::getAllUsersDataPath",
        "AppDataManager::getBinaryPersistence", "AppDataManager::getDataPath",
        "AppDataManager::getDomainFolders", "AppDataManager::getFiles",
        "AppDataManager::getPathForFile", "AppDataManager::getPersistence",
        "AppDataManager::readParam", "AppDataManager::readUnformattedParam",
        "AppDataManager::removeAllData", "AppDataManager::removeDomainData",
        "AppDataManager::setGlobalScope", "AppDataManager::writeParam",
        "AppDataManager::writeParamForAllUsers", "AppDataManager::writeUnformattedParam",
        "AppDataManager::writeUnformattedParamForAllUsers"));

INSTANTIATE_TEST_SUITE_P(
    Stores, MethodCalls,
    testing::Values(
        "PersistenceManager::eraseAllParams", "PersistenceManager::readParam",
        "PersistenceManager::writeParam", "AppDataPersistence::eraseAllParams",
        "AppDataPersistence::readForChange", "AppDataPersistence::readParam",
        "AppDataPersistence::readPersistenceFile", "AppDataPersistence::writeParam",
        "AppDataPersistence::writePersistenceFile", "ParameterText::toText"));

INSTANTIATE_TEST_SUITE_P(
    BinaryStores, MethodCalls,
    testing::Values(
        "BinaryPersistenceManager::eraseAllParams",
        "BinaryPersistenceManager::readUnformattedParam",
        "BinaryPersistenceManager::writeUnformattedParam",
        "BinaryAppDataPersistence::eraseAllParams",
        "BinaryAppDataPersistence::getPersistenceFilePath", "BinaryAppDataPersistence::logDropped",
        "BinaryAppDataPersistence::readPersistenceFile",
        "BinaryAppDataPersistence::readUnformattedParam",
        "BinaryAppDataPersistence::writePersistenceFile",
        "BinaryAppDataPersistence::writeUnformattedParam", "t_Param::getBufferSize",
        "t_Param::getInternalBuffer", "t_Param::getName", "t_Param::marshall",
        "t_Param::operator="));

INSTANTIATE_TEST_SUITE_P(
    Persistence, CountedCalls,
    testing::Values(
        "AppData::constructor", "AppData::destructor", "AppDataPersistence::constructor",
        "AppDataPersistence::destructor", "BinaryAppDataPersistence::constructor",
        "BinaryAppDataPersistence::destructor", "BinaryPersistence::constructor",
        "BinaryPersistence::destructor", "BinaryPersistenceManager::constructor",
        "BinaryPersistenceManager::destructor", "PersistenceManager::constructor",
        "PersistenceManager::destructor", "StringPersistence::constructor",
        "StringPersistence::destructor", "t_Param::constructor", "t_Param::destructor"));

/// The lines that the trace has about the objects that live now.
std::string liveObjects(PublishedTracer& tracer)
{
    const std::size_t before = tracer.lines().size();
    tracer->PrintAllObjectsCount();
    return tracer.lines().substr(before);
}

testing::Matcher<const std::string&> counts(const std::string& className, const std::string& count)
{
    return HasSubstr(
        "Class = " + className + std::string(30 - className.size(), ' ') + ", count = " + count +
        "\n");
}

struct Class {
    const char* name;
    std::shared_ptr<void> (*make)();

    friend void PrintTo(const Class& row, std::ostream* out) { *out << row.name; }
};

template<typename Store>
std::shared_ptr<void> makeStore()
{
    return std::make_shared<Store>("scope", "domain", PERSISTENCE_CURRENT_USER);
}

class ObjectCounts : public testing::TestWithParam<Class> {};

TEST_P(ObjectCounts, FollowTheObjectsThatLive)
{
    const PrivateDataFolders folders;
    PublishedTracer tracer;
    const std::shared_ptr<void> first = GetParam().make();
    std::shared_ptr<void> second = GetParam().make();

    EXPECT_THAT(liveObjects(tracer), counts(GetParam().name, "000002"));
    second.reset();
    EXPECT_THAT(liveObjects(tracer), counts(GetParam().name, "000001"));
}

INSTANTIATE_TEST_SUITE_P(
    Persistence, ObjectCounts,
    testing::Values(
        Class{"AppData", [] { return std::shared_ptr<void>(std::make_shared<AppData>("domain")); }},
        Class{"AppDataPersistence", makeStore<AppDataPersistence>},
        Class{"BinaryAppDataPersistence", makeStore<BinaryAppDataPersistence>},
        Class{"BinaryPersistence", makeStore<BinaryAppDataPersistence>},
        Class{"BinaryPersistenceManager", makeStore<BinaryPersistenceManager>},
        Class{"PersistenceManager", makeStore<PersistenceManager>},
        Class{"StringPersistence", makeStore<AppDataPersistence>},
        Class{
            "t_Param",
            [] { return std::shared_ptr<void>(std::make_shared<t_Param>("a", "A", 1)); }}),
    [](const auto& test) { return std::string(test.param.name); });

TEST(ParameterCounts, TakeInCopiesAndMovedParameters)
{
    PublishedTracer tracer;
    t_Param parameter("a", "A", 1);
    const t_Param copy(parameter);
    t_Param moved(std::move(parameter));
    moved = copy;

    EXPECT_THAT(liveObjects(tracer), counts("t_Param", "000003"));
}

TEST(ParameterCounts, AreBackAtNoneWhenTheParametersOfAFileAreReadAndWritten)
{
    const PrivateDataFolders folders;
    BinaryAppDataPersistence store("scope", "domain", PERSISTENCE_CURRENT_USER);
    PublishedTracer tracer;

    store.writeUnformattedParam("a", "A", 1);
    store.writeUnformattedParam("b", "B", 1);
    int size = 0;
    const OwnedBytes bytes(store.readUnformattedParam("a", size));

    EXPECT_THAT(liveObjects(tracer), counts("t_Param", "000000"));
}

// In a process of its own, since there the one manager is not made yet.
TEST(AppDataManagerDeathTest, IsMarkedAndCountedOnce)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    const auto makeTwice = [] {
        PublishedTracer tracer;
        AppDataManager::getInstance();
        AppDataManager::getInstance();
        liveObjects(tracer);
        std::cerr << tracer.lines();
    };

    EXPECT_EXIT(
        {
            makeTwice();
            std::exit(0);
        },
        ExitedWithCode(0),
        AllOf(HasSubstr("AppDataManager::constructor\n"), counts("AppDataManager", "000001")));
}

} // namespace
