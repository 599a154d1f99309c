#include "BothStores.h"
#include "FileDescriptor.h"
#include "FullDisk.h"
#include "OrdinaryUser.h"
#include "PrivateDataFolders.h"

#include <filesystem>
#include <system_error>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace {

/// A store whose file is not there yet, and what may stand in its place.
template<typename Store>
class ParameterFilePlace : public testing::Test {
protected:
    ~ParameterFilePlace() override
    {
        std::error_code ignored;
        fs::permissions(scopeFolder(), fs::perms{0700}, ignored);
    }

    std::string path() const { return folders.user().file(Store::FILE_NAME); }
    std::string content() const { return folders.user().read(Store::FILE_NAME); }
    std::string scopeFolder() const { return folders.user().file("Pelora/scope"); }

    /// Lets an ordinary user reach the folder of the file, and use it as the mode says.
    void openToOthers(unsigned scopeFolderMode) const
    {
        for (const char* folder : {"", "Pelora"})
            fs::permissions(folders.user().file(folder), fs::perms{0755});
        fs::permissions(scopeFolder(), fs::perms{scopeFolderMode});
    }
    void expectNothingReadOrWritten()
    {
        EXPECT_EQ(store.read("a"), std::nullopt);
        EXPECT_FALSE(store.write("a", "1"));
        store.erase();
    }

    PrivateDataFolders folders;
    Store store;
};

TYPED_TEST_SUITE(ParameterFilePlace, BothStores, StoreNames);

} // namespace

TYPED_TEST(ParameterFilePlace, OfALinkIsRefusedAndItsTargetKept)
{
    const std::string content = TypeParam::contentOf("a", "1");
    const std::string target = this->folders.allUsers().write("target", content);
    fs::create_symlink(target, this->path());

    this->expectNothingReadOrWritten();

    EXPECT_TRUE(fs::is_symlink(this->path()));
    EXPECT_EQ(this->folders.allUsers().read("target"), content);
}

TYPED_TEST(ParameterFilePlace, OfADanglingLinkIsRefusedAndItsTargetNotMade)
{
    fs::create_symlink(this->folders.allUsers().file("target"), this->path());

    this->expectNothingReadOrWritten();

    EXPECT_TRUE(fs::is_symlink(this->path()));
    EXPECT_FALSE(fs::exists(this->folders.allUsers().file("target")));
}

TYPED_TEST(ParameterFilePlace, OfAFolderIsRefused)
{
    fs::create_directories(this->path() + "/inside");

    this->expectNothingReadOrWritten();

    EXPECT_TRUE(fs::is_directory(this->path() + "/inside"));
}

TYPED_TEST(ParameterFilePlace, OfAFifoIsRefusedWithoutWaiting)
{
    ASSERT_EQ(mkfifo(this->path().c_str(), 0600), 0);

    this->expectNothingReadOrWritten();

    EXPECT_TRUE(fs::is_fifo(this->path()));
}

TYPED_TEST(ParameterFilePlace, InAnUnwritableFolderTakesNoNewFile)
{
    this->openToOthers(0555);

    EXPECT_TRUE(asOrdinaryUser([this] {
        const bool written = this->store.write("a", "1");
        this->store.erase();
        return !written && this->store.read("a") == std::nullopt;
    }));

    EXPECT_TRUE(fs::is_empty(this->scopeFolder()));
}

TYPED_TEST(ParameterFilePlace, InAnUnwritableFolderKeepsAnUnwritableFile)
{
    this->store.write("a", "1");
    fs::permissions(this->path(), fs::perms{0444});
    this->openToOthers(0555);

    EXPECT_TRUE(asOrdinaryUser([this] {
        const bool written = this->store.write("a", "2");
        this->store.erase();
        return !written && this->store.read("a") == "1";
    }));

    EXPECT_EQ(this->content(), TypeParam::contentOf("a", "1"));
}

TYPED_TEST(ParameterFilePlace, InAnUnwritableFolderIsThatOfAFileWhichCanBeWritten)
{
    this->store.write("a", "1");
    this->openToOthers(0555);
    fs::permissions(this->path(), fs::perms{0666});

    EXPECT_TRUE(asOrdinaryUser([this] { return this->store.write("a", "2"); }));

    EXPECT_EQ(this->content(), TypeParam::contentOf("a", "2"));
}

// What another process is writing in place may be a mix, which no write may store for good.
TYPED_TEST(ParameterFilePlace, OfAFileThatIsBeingWrittenInPlaceTakesNoChange)
{
    this->store.write("a", "1");
    const FileDescriptor writer(open(this->path().c_str(), O_WRONLY));
    ASSERT_EQ(lockf(writer.get(), F_TLOCK, 0), 0);

    EXPECT_FALSE(this->store.write("b", "2"));

    EXPECT_EQ(this->content(), TypeParam::contentOf("a", "1"));
    ASSERT_EQ(lockf(writer.get(), F_ULOCK, 0), 0);
    EXPECT_TRUE(this->store.write("b", "2"));
}

TYPED_TEST(ParameterFilePlace, InAFolderThatIsGoneIsMadeAgain)
{
    fs::remove_all(this->folders.user().file("Pelora"));

    EXPECT_TRUE(this->store.write("a", "1"));

    EXPECT_EQ(this->content(), TypeParam::contentOf("a", "1"));
    EXPECT_EQ(fs::status(this->scopeFolder()).permissions(), fs::perms{0700});
}

TYPED_TEST(ParameterFilePlace, OfAnUnreadableFileIsNotGivenToTheOneNewParameter)
{
    this->store.write("a", "1");
    this->openToOthers(0777);
    fs::permissions(this->path(), fs::perms{0});

    EXPECT_TRUE(asOrdinaryUser(
        [this] { return this->store.read("a") == std::nullopt && !this->store.write("b", "2"); }));
    fs::permissions(this->path(), fs::perms{0600});

    EXPECT_EQ(this->content(), TypeParam::contentOf("a", "1"));
}

TYPED_TEST(ParameterFilePlace, KeepsTheOldContentWhenTheNewDoesNotFit)
{
    this->store.write("a", "1");

    EXPECT_TRUE(onFullDisk(15, [this] { return !this->store.write("b", std::string(100, 'x')); }));

    EXPECT_EQ(this->content(), TypeParam::contentOf("a", "1"));
    EXPECT_EQ(this->store.read("a"), "1");
}

TYPED_TEST(ParameterFilePlace, HoldsTheFileAlone)
{
    this->store.write("a", "1");
    this->store.write("a", "2");

    EXPECT_EQ(this->content(), TypeParam::contentOf("a", "2"));
    EXPECT_EQ(std::distance(fs::directory_iterator(this->scopeFolder()), {}), 1);
}

TYPED_TEST(ParameterFilePlace, IsFixedWhenTheStoreIsMade)
{
    const TemporaryFolder later;
    const ScopedEnvironment variable("XDG_DATA_HOME", later.path());

    EXPECT_TRUE(this->store.write("a", "1"));

    EXPECT_EQ(this->content(), TypeParam::contentOf("a", "1"));
    EXPECT_TRUE(fs::is_empty(later.path()));
}

TYPED_TEST(ParameterFilePlace, IsReadAnewByEveryOperation)
{
    this->store.write("a", "1");
    EXPECT_EQ(this->store.read("a"), "1");
    const std::string changed = TypeParam::contentOf("a", "2") + TypeParam::contentOf("b", "3");
    this->folders.user().write(TypeParam::FILE_NAME, changed);

    EXPECT_EQ(this->store.read("a"), "2");
    EXPECT_TRUE(this->store.write("c", "4"));

    EXPECT_EQ(this->content(), changed + TypeParam::contentOf("c", "4"));
}

TYPED_TEST(ParameterFilePlace, HoldsAHundredThousandParameters)
{
    std::string content;
    for (int number = 100000; number < 200000; ++number)
        content += TypeParam::contentOf("name" + std::to_string(number), std::to_string(number));
    this->folders.user().write(TypeParam::FILE_NAME, content);

    EXPECT_TRUE(this->store.write("name200000", "200000"));

    EXPECT_EQ(this->content(), content + TypeParam::contentOf("name200000", "200000"));
    EXPECT_EQ(this->store.read("name100000"), "100000");
    EXPECT_EQ(this->store.read("name199999"), "199999");
}

TYPED_TEST(ParameterFilePlace, GetsAFileThatOthersCanReadButNotWrite)
{
    this->store.write("a", "1");

    EXPECT_EQ(fs::status(this->path()).permissions(), fs::perms{0644});
}

TYPED_TEST(ParameterFilePlace, InAFolderThatCannotBeMadeIsRefused)
{
    const TemporaryFolder home;
    const ScopedEnvironment variable("XDG_DATA_HOME", home.path());
    home.write("Pelora", "x");
    TypeParam blocked;

    EXPECT_FALSE(blocked.write("a", "1"));
    EXPECT_EQ(blocked.read("a"), std::nullopt);
    blocked.erase();

    EXPECT_EQ(home.read("Pelora"), "x");
}
