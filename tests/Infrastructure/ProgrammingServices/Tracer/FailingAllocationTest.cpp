#include "Allocations.h"
#include "CallMarker.h"
#include "LineOutputFixture.h"
#include "LogStream.h"
#include "Logger.h"
#include "PublishedLogger.h"
#include "PublishedTracer.h"
#include "TraceStream.h"

#include <functional>
#include <new>
#include <optional>
#include <ostream>
#include <string>
#include <thread>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

// Neither fits into a string object itself.
const std::string c_longText(3000, 'x');
constexpr const char* c_longName = "a name of more than fifteen characters";

struct Outcome {
    bool failed; // the action came to the allocation
    bool threw;
};

/// What becomes of the action when its nth allocation fails.
Outcome failAllocation(int nth, const std::function<void()>& action)
{
    Allocations allocations;
    allocations.fail(nth);
    try {
        action();
    } catch (const std::bad_alloc&) {
        return {true, true};
    }
    return {allocations.count() >= nth, false};
}

bool isFreeForOthers(KFMutex& mutex)
{
    bool isFree = false;
    std::thread([&mutex, &isFree] {
        isFree = mutex.tryacquire();
        if (isFree)
            mutex.release();
    }).join();
    return isFree;
}

/// A log whose mutex the test may look at.
class HeldLogger : public Logger {
public:
    using Logger::m_mutex;
};

/// What a facility does while it runs out of memory.
template<typename Facility>
struct Operation {
    const char* name;
    void (*run)(Facility&);
    bool mayThrow = false;

    friend void PrintTo(const Operation& operation, std::ostream* out) { *out << operation.name; }
};

void traceACall(Tracer& tracer)
{
    const CallMarker marker("f", &tracer);
}

void traceAConstructor(Tracer& tracer)
{
    const CallMarker marker(c_longName, c_longName, true, &tracer);
}

void traceTheFirstCallOfTheThread(Tracer& tracer)
{
    tracer.EndOfThread();
    const CallMarker marker("f");
}

void traceMessages(Tracer& /*tracer*/)
{
    CallMarker marker("f");
    TAV_TRACE(marker, TraceMsgType::E, "%s", c_longText.c_str());
    TraceStream(TraceMsgType::E, marker) << c_longText;
}

void nameTheThread(Tracer& tracer)
{
    tracer.EndOfThread();
    tracer.BeginningOfThread(c_longName);
}

void addPatterns(Tracer& tracer)
{
    tracer.TraceTheThread(c_longName);
    tracer.TraceTheCall(c_longName);
    tracer.TraceTheCall("-a name of more than fifteen characters");
}

void report(Tracer& tracer)
{
    const CallMarker marker("A", "A::constructor", true, &tracer);
    tracer.PrintStacks();
    tracer.PrintAllObjectsCount();
}

void finishTracing(Tracer& tracer)
{
    tracer.setSynchronous(false);
    tracer.setMaxLinesPerFile(1);
    tracer.PrintString("1\n");
    tracer.PrintString("2\n");
    tracer.FinishTracing();
}

void logLines(HeldLogger& /*logger*/)
{
    TAV_LOG(LoggerMsgType::ERROR, "short");
    TAV_LOG(LoggerMsgType::ERROR, "%s", c_longText.c_str());
    LogStream(LoggerMsgType::ERROR) << c_longText;
}

void finishLogging(HeldLogger& logger)
{
    logger.setSynchronous(false);
    logger.setMaxLinesPerFile(1);
    logger.PrintString("1\n");
    logger.PrintString("2\n");
    logger.FinishLogging();
}

void addALine(TestOutput& output)
{
    output.PrintString(c_longText);
}

void writeAPass(TestOutput& output)
{
    output.WriteOnFile();
}

void writeSynchronously(TestOutput& output)
{
    output.setSynchronous(true);
    output.PrintString("3\n");
}

void writeInBackground(TestOutput& output)
{
    output.writeInBackground();
}

void drain(TestOutput& output)
{
    output.drain();
}

void setTheFolder(TestOutput& output)
{
    output.SetFolderName(c_longText);
}

void setABareName(TestOutput& output)
{
    output.SetFileName(c_longName);
}

void setANameInNoFolder(TestOutput& output)
{
    output.SetFolderName("");
    output.SetFileName(c_longName);
}

void setAPath(TestOutput& output)
{
    output.SetFileName("/a folder/that is/not there/");
}

void remakeTheName(TestOutput& output)
{
    output.UpdateFileName();
}

void askForTheName(TestOutput& output)
{
    static_cast<void>(output.getCurrentFileName());
}

class TracerWithoutMemory : public testing::TestWithParam<Operation<Tracer>> {};
class LoggerWithoutMemory : public testing::TestWithParam<Operation<HeldLogger>> {};
class LineOutputWithoutMemory : public testing::TestWithParam<Operation<TestOutput>> {};

} // namespace

TEST_P(TracerWithoutMemory, ReleasesTheMutex)
{
    int nth = 0;
    for (bool fails = true; fails;) {
        PublishedTracer tracer;
        tracer->setPrintExit(true);
        tracer->setPrintTime(true);
        tracer->setPrintObjects(true);

        const Outcome outcome =
            failAllocation(++nth, [] { GetParam().run(*Tracer::GetInstance()); });

        ASSERT_TRUE(isFreeForOthers(tracer.mutex())) << "allocation " << nth;
        EXPECT_TRUE(!outcome.threw || GetParam().mayThrow) << "allocation " << nth;
        fails = outcome.failed;
    }
    EXPECT_GT(nth, 1) << "nothing was allocated";
}

INSTANTIATE_TEST_SUITE_P(
    Operations, TracerWithoutMemory,
    testing::Values(
        Operation<Tracer>{"call", traceACall}, Operation<Tracer>{"constructor", traceAConstructor},
        Operation<Tracer>{"first call", traceTheFirstCallOfTheThread},
        Operation<Tracer>{"messages", traceMessages}, Operation<Tracer>{"thread", nameTheThread},
        Operation<Tracer>{"patterns", addPatterns, true}, Operation<Tracer>{"report", report, true},
        Operation<Tracer>{"end", finishTracing, true}));

TEST_P(LoggerWithoutMemory, ReleasesTheMutex)
{
    int nth = 0;
    for (bool fails = true; fails;) {
        const TemporaryFolder folder;
        HeldLogger logger;
        logger.setSynchronous(true);
        logger.setPrintTime(true);
        logger.addLevels(0x1FF);
        logger.SetFileName(folder.file("log"));
        Logger::SetInstance(&logger);
        logger.setActive(true);

        const Outcome outcome = failAllocation(++nth, [&logger] { GetParam().run(logger); });

        ASSERT_TRUE(isFreeForOthers(logger.m_mutex)) << "allocation " << nth;
        EXPECT_TRUE(!outcome.threw || GetParam().mayThrow) << "allocation " << nth;
        fails = outcome.failed;
    }
    EXPECT_GT(nth, 1) << "nothing was allocated";
}

INSTANTIATE_TEST_SUITE_P(
    Operations, LoggerWithoutMemory,
    testing::Values(
        Operation<HeldLogger>{"lines", logLines},
        Operation<HeldLogger>{"end", finishLogging, true}));

TEST_P(LineOutputWithoutMemory, ReleasesTheMutex)
{
    int nth = 0;
    for (bool fails = true; fails;) {
        const TemporaryFolder folder;
        TestOutput output;
        output.SetFolderName(folder.file(""));
        output.setMaxLinesPerFile(1);
        output.SetFileName("ring");
        output.PrintString("1\n");
        output.PrintString("2\n");

        const Outcome outcome = failAllocation(++nth, [&output] { GetParam().run(output); });

        ASSERT_TRUE(output.isMutexFree()) << "allocation " << nth;
        EXPECT_TRUE(!outcome.threw || GetParam().mayThrow) << "allocation " << nth;
        fails = outcome.failed;
    }
    EXPECT_GT(nth, 1) << "nothing was allocated";
}

INSTANTIATE_TEST_SUITE_P(
    Operations, LineOutputWithoutMemory,
    testing::Values(
        Operation<TestOutput>{"line", addALine, true},
        Operation<TestOutput>{"pass", writeAPass, true},
        Operation<TestOutput>{"synchronous line", writeSynchronously, true},
        Operation<TestOutput>{"background pass", writeInBackground},
        Operation<TestOutput>{"drain", drain}, Operation<TestOutput>{"folder", setTheFolder, true},
        Operation<TestOutput>{"bare name", setABareName, true},
        Operation<TestOutput>{"name in no folder", setANameInNoFolder, true},
        Operation<TestOutput>{"path", setAPath, true},
        Operation<TestOutput>{"next name", remakeTheName, true},
        Operation<TestOutput>{"question", askForTheName, true}));

TEST(LineOutputWithoutMemory, KeepsTheMutexOfAFailedOpenAlsoWhereItsMessageIsLost)
{
    const TemporaryFolder folder;
    TestOutput output;
    output.SetFileName(folder.file("a folder that is not there/ring"));
    output.PrintString("1\n");
    testing::internal::CaptureStderr();

    const Outcome outcome = failAllocation(1, [&output] { output.WriteOnFile(); });

    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    EXPECT_TRUE(outcome.failed);
    EXPECT_FALSE(outcome.threw);
    EXPECT_FALSE(output.isMutexFree());
    output.mutex().release();
}

TEST(TracerWithoutMemory, TracesTheNextCallsAsEver)
{
    int nth = 0;
    for (bool fails = true; fails;) {
        PublishedTracer tracer;
        tracer->setPrintExit(true);

        fails = failAllocation(++nth, [] {
                    const CallMarker outer("outer");
                    const CallMarker inner("inner");
                }).failed;
        const std::string before = tracer.lines();
        {
            const CallMarker marker("next");
        }

        EXPECT_EQ(
            tracer.lines(), before + "[<id>][test           ]next\n"
                                     "[<id>][test           ]  <- next\n")
            << "allocation " << nth;
    }
    EXPECT_GT(nth, 1) << "nothing was allocated";
}

TEST(TracerWithoutMemory, TakesNoMessagesOfACallThatIsNotRecorded)
{
    PublishedTracer tracer;
    int nth = 0;
    int lost = 0;
    for (bool fails = true; fails;) {
        std::optional<CallMarker> marker;

        fails = failAllocation(++nth, [&marker] { marker.emplace("f"); }).failed;
        lost += marker->getThreadTracer() == nullptr ? 1 : 0;

        EXPECT_EQ(marker->getThreadTracer() != nullptr, marker->traces(TraceMsgType::E));
        EXPECT_EQ(marker->getThreadTracer() != nullptr, marker->isPrinted());
    }
    EXPECT_GT(lost, 0);
}

TEST(TracerWithoutMemory, LetsOtherThreadsTraceAndLog)
{
    PublishedTracer tracer;
    const PublishedLogger logger;

    failAllocation(1, [] { const CallMarker marker("lost"); });
    failAllocation(1, [] { TAV_LOG(LoggerMsgType::ERROR, "%s", c_longName); });
    std::thread([] {
        const CallMarker marker("other");
        TAV_LOG(LoggerMsgType::ERROR, "other");
    }).join();

    EXPECT_EQ(tracer.linesOfAllThreads(), "[<id>][<id>]other\n");
    EXPECT_EQ(logger.lines(), "[ERROR  ] other\n");
}

TEST(LineOutputWithoutMemory, KeepsItsOutputWhereTheNextCannotBeHad)
{
    int nth = 0;
    for (bool fails = true; fails;) {
        const TemporaryFolder folder;
        const std::string next = folder.file("the next ring");
        folder.write("the next ring_0.txt", "old\n");
        TestOutput output;
        output.SetFileName(folder.file("ring"));

        const Outcome outcome = failAllocation(++nth, [&] { output.SetFileName(next); });
        output.PrintString("new\n");
        output.WriteOnFile();

        EXPECT_EQ(outcome.threw, outcome.failed) << "allocation " << nth;
        EXPECT_EQ(folder.read("ring_0.txt"), outcome.threw ? "new\n" : "") << "allocation " << nth;
        EXPECT_EQ(
            output.getCurrentFileName(), (outcome.threw ? folder.file("ring") : next) + "_0.txt");
        fails = outcome.failed;
    }
    EXPECT_GT(nth, 1) << "nothing was allocated";
}

TEST(LineOutputWithoutMemory, KeepsWhatAPassHasWrittenBeforeTheNextFileCouldNotBeNamed)
{
    int nth = 0;
    for (bool fails = true; fails;) {
        const TemporaryFolder folder;
        TestOutput output;
        output.setMaxLinesPerFile(1);
        output.SetFileName(folder.file("ring"));
        output.PrintString("1\n");
        output.PrintString("2\n");

        fails = failAllocation(++nth, [&output] { output.WriteOnFile(); }).failed;
        output.WriteOnFile();

        EXPECT_THAT(folder.read("ring_0.txt"), testing::StartsWith("1\n")) << "allocation " << nth;
        EXPECT_TRUE(output.areAllMsgFlushed());
        EXPECT_THAT(
            output.getCurrentFileName(), testing::EndsWith(fails ? "ring_1.txt" : "ring_2.txt"));
    }
    EXPECT_GT(nth, 1) << "nothing was allocated";
}
