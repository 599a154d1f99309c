#include "BothStores.h"
#include "OrdinaryUser.h"
#include "PrivateDataFolders.h"
#include "SystemCallFaults.h"

#include <filesystem>
#include <system_error>
#include <vector>

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace {

const std::string shorter(100000, 'x');
const std::string longer(150000, 'y');
const std::string untouched(100000, 'z');

/// Two processes, each of which gives the same parameter a value of its own again and again. Behind
/// it stands one that they never touch, which a mix would cut.
template<typename Store>
class ParameterProcesses : public testing::Test {
protected:
    static constexpr int s_rounds = 25;

    ParameterProcesses()
    {
        Store().write("a", shorter);
        Store().write("b", untouched);
    }
    ~ParameterProcesses() override
    {
        std::error_code ignored;
        fs::permissions(folders.user().file("Pelora/scope"), fs::perms{0700}, ignored);
    }

    std::string path() const { return folders.user().file(Store::FILE_NAME); }

    /// Lets an ordinary user write the file, and make no other in its folder.
    void closeFolder() const
    {
        for (const char* folder : {"", "Pelora"})
            fs::permissions(folders.user().file(folder), fs::perms{0755});
        fs::permissions(folders.user().file("Pelora/scope"), fs::perms{0555});
        fs::permissions(path(), fs::perms{0666});
    }
    static int countFailures(const std::string& value)
    {
        Store store;
        int failures = 0;
        for (int round = 0; round < s_rounds; ++round)
            failures += store.write("a", value) ? 0 : 1;
        return failures;
    }
    /// In pieces, so that what one reads is likely to change meanwhile.
    static int countFailuresInPlace(const std::string& value)
    {
        if (!becomeOrdinaryUser())
            return s_rounds + 1;
        SystemCallFaults pieces;
        pieces.limitTransfers(8192);
        return countFailures(value);
    }
    static pid_t startWriter(int (*write)(const std::string& value), const std::string& value)
    {
        const pid_t writer = fork();
        if (writer == 0)
            _exit(write(value));
        EXPECT_GT(writer, 0);
        return writer;
    }
    static std::vector<pid_t> startWriters(int (*write)(const std::string& value))
    {
        return {startWriter(write, shorter), startWriter(write, longer)};
    }
    /// How many writes failed for a writer that has ended.
    static int failuresIn(int status)
    {
        EXPECT_TRUE(WIFEXITED(status));
        EXPECT_LE(WEXITSTATUS(status), s_rounds);
        return WEXITSTATUS(status);
    }
    /// Runs the writers to their end; tells how many writes failed.
    static int runWriters(int (*write)(const std::string& value) = countFailures)
    {
        int failures = 0;
        for (const pid_t writer : startWriters(write)) {
            int status = 0;
            EXPECT_EQ(waitpid(writer, &status, 0), writer);
            failures += failuresIn(status);
        }
        return failures;
    }
    /// Calls `look` again and again meanwhile.
    template<typename Look>
    static int watchWriters(const Look& look)
    {
        std::vector<pid_t> writers = startWriters(countFailures);
        int failures = 0;
        while (!writers.empty()) {
            look();
            std::erase_if(writers, [&failures](pid_t writer) {
                int status = 0;
                const pid_t ended = waitpid(writer, &status, WNOHANG);
                if (ended == 0)
                    return false;
                EXPECT_EQ(ended, writer);
                failures += failuresIn(status);
                return true;
            });
        }
        return failures;
    }
    bool isContentWhole() const
    {
        const std::string content = folders.user().read(Store::FILE_NAME);
        const std::string rest = Store::contentOf("b", untouched);
        return content == Store::contentOf("a", shorter) + rest ||
               content == Store::contentOf("a", longer) + rest;
    }

    PrivateDataFolders folders;
};

TYPED_TEST_SUITE(ParameterProcesses, BothStores, StoreNames);

} // namespace

TYPED_TEST(ParameterProcesses, ShowEveryReaderOneOfTheirFilesWhole)
{
    int looks = 0;
    int whole = 0;

    const int failures = this->watchWriters([&] {
        ++looks;
        whole += this->isContentWhole() ? 1 : 0;
    });

    EXPECT_EQ(failures, 0);
    EXPECT_EQ(whole, looks);
    EXPECT_TRUE(this->isContentWhole());
}

TYPED_TEST(ParameterProcesses, StartWithoutTheFile)
{
    fs::remove(this->path());

    const int failures = this->runWriters();

    EXPECT_EQ(failures, 0);
    const std::string content = this->folders.user().read(TypeParam::FILE_NAME);
    EXPECT_TRUE(
        content == TypeParam::contentOf("a", shorter) ||
        content == TypeParam::contentOf("a", longer));
}

TYPED_TEST(ParameterProcesses, NeverStoreAMixWhereTheyWriteInPlace)
{
    this->closeFolder();

    const int failures = this->runWriters(this->countFailuresInPlace);

    EXPECT_LT(failures, 2 * this->s_rounds);
    EXPECT_TRUE(this->isContentWhole());
}
