#include "BothStores.h"
#include "PrivateDataFolders.h"
#include "PublishedLogger.h"

#include <filesystem>

#include <gtest/gtest.h>

namespace fs = std::filesystem;

namespace {

/// What the log has of a write that fails.
template<typename Store>
class ParameterLog : public testing::Test {
protected:
    std::string path() const { return folders.user().file(Store::FILE_NAME); }

    PrivateDataFolders folders;
    Store store;
    PublishedLogger log;
};

TYPED_TEST_SUITE(ParameterLog, BothStores, StoreNames);

} // namespace

TYPED_TEST(ParameterLog, NamesTheFileThatCannotBeWrittenAndTheReason)
{
    const std::string scopeFolder = this->folders.user().file("Pelora/scope");
    fs::remove(scopeFolder);
    fs::create_symlink("missing", scopeFolder);

    EXPECT_FALSE(this->store.write("a", "1"));

    EXPECT_EQ(
        this->log.lines(), "[ERROR  ] Cannot write the parameters to " + this->path() +
                               ": opening the folder: No such file or directory\n");
}

TYPED_TEST(ParameterLog, NamesTheFileThatCannotBeErasedAndTheReason)
{
    fs::create_directory(this->path());

    this->store.erase();

    EXPECT_EQ(
        this->log.lines(), "[ERROR  ] Cannot write the parameters to " + this->path() +
                               ": opening the file: Not a regular file\n");
}

TYPED_TEST(ParameterLog, NamesTheFileThatCannotBeReadForAWriteAndTheReason)
{
    fs::create_directory(this->path());

    EXPECT_FALSE(this->store.write("a", "1"));

    EXPECT_EQ(
        this->log.lines(), "[ERROR  ] Cannot read the parameters of " + this->path() +
                               ": opening the file: Not a regular file\n");
}

TYPED_TEST(ParameterLog, SaysNothingOfAWriteThatSucceedsNorOfAMissingFile)
{
    EXPECT_EQ(this->store.read("a"), std::nullopt);
    EXPECT_TRUE(this->store.write("a", "1"));

    EXPECT_EQ(this->log.lines(), "");
}
