#include "AppDataPersistence.h"
#include "PrivateDataFolders.h"
#include "PublishedLogger.h"
#include "SystemCallFaults.h"

#include <algorithm>
#include <cerrno>
#include <functional>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <pthread.h>

// The linker leads every call of the two functions here.
extern "C" {

int realLock(pthread_mutex_t* mutex) __asm__("__real_pthread_mutex_lock");
int realUnlock(pthread_mutex_t* mutex) __asm__("__real_pthread_mutex_unlock");
int lockCalled(pthread_mutex_t* mutex) __asm__("__wrap_pthread_mutex_lock");
int unlockCalled(pthread_mutex_t* mutex) __asm__("__wrap_pthread_mutex_unlock");

int lockCalled(pthread_mutex_t* mutex)
{
    const int result = realLock(mutex);
    SystemCallFaults::enter({"lock"});
    return result;
}

int unlockCalled(pthread_mutex_t* mutex)
{
    SystemCallFaults::enter({"unlock"});
    return realUnlock(mutex);
}

} // extern "C"

using testing::Contains;
using testing::ElementsAre;
using testing::IsSupersetOf;
using testing::Not;

namespace {

using Steps = std::vector<std::string>;

/// None that the reading of a file could take for a failure of its own.
struct EndOfReading {};

class ParameterMutex : public testing::Test {
protected:
    /// What the action called, in this order; the opening of the parameters' file is "open".
    static Steps stepsOf(const std::function<void()>& action, int readError = 0)
    {
        SystemCallFaults faults;
        if (readError != 0)
            faults.fail("read", readError);
        action();
        return stepsIn(faults);
    }
    /// What an action called whose reading an exception ends.
    Steps stepsOfUnwinding(const std::function<void()>& action) const
    {
        SystemCallFaults faults;
        faults.interruptOpening(
            folders.user().file("Pelora/scope/domain.dat"), [] { throw EndOfReading(); });
        EXPECT_THROW(action(), EndOfReading);
        return stepsIn(faults);
    }
    static Steps stepsIn(const SystemCallFaults& faults)
    {
        Steps steps;
        for (const SystemCallFaults::Call& call : faults.calls())
            steps.push_back(call.path.ends_with("domain.dat") ? "open" : call.name);
        return steps;
    }
    void read()
    {
        std::string value;
        store.readParam("a", value);
    }
    void writeFile() const { folders.user().write("Pelora/scope/domain.dat", "a=1\n"); }

    PrivateDataFolders folders;
    AppDataPersistence store{"scope", "domain", PERSISTENCE_CURRENT_USER};
};

} // namespace

TEST_F(ParameterMutex, IsHeldFromBeforeTheOpeningToTheEndOfTheReading)
{
    writeFile();

    const Steps steps = stepsOf([this] { read(); });

    EXPECT_THAT(steps, ElementsAre("lock", "open", "fstat", "fstat", "read", "read", "unlock"));
}

TEST_F(ParameterMutex, IsReleasedWhenThereIsNoFile)
{
    EXPECT_THAT(stepsOf([this] { read(); }), ElementsAre("lock", "open", "unlock"));
}

TEST_F(ParameterMutex, IsReleasedWhenTheReadingFails)
{
    writeFile();

    const Steps steps = stepsOf([this] { read(); }, EIO);

    EXPECT_THAT(steps, ElementsAre("lock", "open", "fstat", "fstat", "read", "unlock"));
}

TEST_F(ParameterMutex, IsHeldForTheReadingOfAWriteButNotForItsWriting)
{
    writeFile();

    const Steps steps = stepsOf([this] { store.writeParam("b", "2"); });

    const auto released = std::find(steps.begin(), steps.end(), "unlock");
    EXPECT_THAT(
        Steps(steps.begin(), released),
        ElementsAre("lock", "open", "fstat", "fcntl", "fstat", "read", "read"));
    ASSERT_NE(released, steps.end());
    const Steps writing(released + 1, steps.end());
    EXPECT_THAT(writing, IsSupersetOf({"write", "renameat"}));
    EXPECT_THAT(writing, Not(Contains("lock")));
}

TEST_F(ParameterMutex, IsReleasedWhenTheReadingOfAWriteFails)
{
    writeFile();

    const Steps steps = stepsOf([this] { store.writeParam("b", "2"); }, EIO);

    EXPECT_THAT(steps, ElementsAre("lock", "open", "fstat", "fcntl", "fstat", "read", "unlock"));
}

TEST_F(ParameterMutex, IsReleasedBeforeTheFailureOfAWriteIsLogged)
{
    writeFile();
    const PublishedLogger log;

    const Steps steps = stepsOf([this] { store.writeParam("b", "2"); }, EIO);

    EXPECT_NE(log.lines(), "");
    const auto logging = std::find(steps.begin() + 1, steps.end(), "lock");
    EXPECT_THAT(
        Steps(steps.begin(), logging),
        ElementsAre("lock", "open", "fstat", "fcntl", "fstat", "read", "unlock"));
}

TEST_F(ParameterMutex, IsReleasedWhenAnExceptionEndsTheReading)
{
    EXPECT_THAT(stepsOfUnwinding([this] { read(); }), ElementsAre("lock", "open", "unlock"));
    EXPECT_THAT(
        stepsOfUnwinding([this] { store.writeParam("b", "2"); }),
        ElementsAre("lock", "open", "unlock"));
}

TEST_F(ParameterMutex, IsNotTakenToErase)
{
    writeFile();

    EXPECT_THAT(stepsOf([this] { store.eraseAllParams(); }), Not(Contains("lock")));
}
