#include "AppDataPersistence.h"
#include "BinaryAppDataPersistence.h"
#include "OwnedBytes.h"
#include "PrivateDataFolders.h"
#include "PublishedTracer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testing::HasSubstr;
using testing::Not;

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
