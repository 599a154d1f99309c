#include "ContendedMutex.h"
#include "KFMutexGuard.h"
#include "LineOutputFixture.h"

#include <ctime>
#include <functional>
#include <future>
#include <optional>
#include <ostream>
#include <string>
#include <thread>

namespace {

/// What every clock shows, when the test has set it.
std::optional<std::timespec> shownTime;

struct Operation {
    std::string name;
    std::function<void(TestOutput&)> action;

    friend void PrintTo(const Operation& row, std::ostream* out) { *out << row.name; }
};

class LineOutputMutex : public LineOutputTest, public testing::WithParamInterface<Operation> {
protected:
    LineOutputMutex() { m_output.SetFileName("msvc"); }
};

} // namespace

extern "C" {
// NOLINTBEGIN(bugprone-reserved-identifier): the names that the linker's --wrap gives
int __real_clock_gettime(clockid_t clock, std::timespec* time);

int __wrap_clock_gettime(clockid_t clock, std::timespec* time)
{
    if (!shownTime)
        return __real_clock_gettime(clock, time);
    *time = *shownTime;
    return 0;
}
// NOLINTEND(bugprone-reserved-identifier)
}

TEST_P(LineOutputMutex, IsWaitedForAndReleased)
{
    EXPECT_TRUE(waitsFor(m_output.mutex(), [this] { GetParam().action(m_output); }));
    EXPECT_TRUE(m_output.isMutexFree());
}

INSTANTIATE_TEST_SUITE_P(
    Operations, LineOutputMutex,
    testing::Values(
        Operation{"SetFolderName", [](TestOutput& output) { output.SetFolderName("/elsewhere/"); }},
        Operation{"SetFileName", [](TestOutput& output) { output.SetFileName("console"); }},
        Operation{"UpdateFileName", [](TestOutput& output) { output.UpdateFileName(); }},
        Operation{"PrintString", [](TestOutput& output) { output.PrintString("dropped\n"); }},
        Operation{"WriteOnFile", [](TestOutput& output) { output.WriteOnFile(); }},
        Operation{"areAllMsgFlushed", [](TestOutput& output) { output.areAllMsgFlushed(); }},
        Operation{"getCurrentFileName", [](TestOutput& output) { output.getCurrentFileName(); }},
        Operation{
            "Initialize",
            [](TestOutput& output) {
                output.setSynchronous(true);
                output.Initialize();
            }},
        Operation{"finish", [](TestOutput& output) { output.finish(); }}),
    [](const testing::TestParamInfo<Operation>& operation) { return operation.param.name; });

TEST_F(LineOutputRing, DrainWaitsForAPassThatIsUnderWay)
{
    useRing();
    print("waiting\n");
    std::promise<void> begun;
    std::promise<void> end;
    std::future<void> pass = std::async(std::launch::async, [&] {
        const KFMutexGuard guard(m_output.mutex());
        begun.set_value();
        end.get_future().wait();
    });
    MutexWatch watch(m_output.mutex());
    bool waited = false;
    watch.onNextWait([&] {
        waited = true;
        end.set_value();
        pass.wait();
    });

    begun.get_future().wait();
    m_output.drain();
    if (!waited)
        end.set_value();
    pass.wait();

    EXPECT_EQ(m_folder.read("app_0.txt"), "waiting\n");
}

TEST_F(LineOutputRing, DrainWaitsForTheMutexForASecondAtMost)
{
    useRing();
    print("waiting\n");
    MutexWatch watch(m_output.mutex());

    m_output.mutex().acquire();
    shownTime = {1, 500}; // long ago, so that the wait is over at once
    std::thread([this] { m_output.drain(); }).join();
    shownTime.reset();
    m_output.mutex().release();

    EXPECT_EQ(watch.deadline().tv_sec, 2);
    EXPECT_EQ(watch.deadline().tv_nsec, 500);
}
