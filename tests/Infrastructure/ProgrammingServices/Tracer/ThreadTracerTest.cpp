#include "ThreadTracer.h"

#include "CallMarker.h"
#include "PublishedTracer.h"

#include <algorithm>
#include <cstdint>
#include <future>
#include <ostream>
#include <string>
#include <thread>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

namespace {

const void* at(std::uintptr_t address)
{
    return reinterpret_cast<const void*>(address); // NOLINT(performance-no-int-to-ptr): only shown
}

std::string padded(std::string text, std::size_t width)
{
    text.resize(std::max(width, text.size()), ' ');
    return text;
}

struct TypeTag {
    TraceMsgType type;
    std::string tag;

    friend void PrintTo(const TypeTag& row, std::ostream* out) { *out << row.tag; }
};

class ThreadTracerTags : public testing::TestWithParam<TypeTag> {};

class ThreadTracerTest : public testing::Test {
protected:
    PublishedTracer m_tracer;
};

/// The id that the system tells of every thread; 0 for its own.
pid_t toldId = 0;

/// A thread "other" inside the call "waiting", for the time of a scope.
class WaitingThread {
public:
    WaitingThread() { m_opened.get_future().wait(); }
    ~WaitingThread()
    {
        m_finished.set_value();
        m_thread.join();
    }

    WaitingThread(const WaitingThread&) = delete;
    WaitingThread& operator=(const WaitingThread&) = delete;

private:
    void wait()
    {
        Tracer::GetInstance()->BeginningOfThread("other");
        const CallMarker marker("waiting");
        m_opened.set_value();
        m_finished.get_future().wait();
    }

    std::promise<void> m_opened;
    std::promise<void> m_finished;
    std::thread m_thread{&WaitingThread::wait, this};
};

constexpr const char* STACK_OF_THE_OTHER = "\n-------------- CALLSTACK --------------\n"
                                           "[<id>][other          ]    [1] waiting\n"
                                           "---------------------------------------\n";

/// With the column of count and address.
class ThreadTracerObjects : public ThreadTracerTest {
protected:
    ThreadTracerObjects() { m_tracer->setPrintObjects(true); }
};

} // namespace

extern "C" {
// NOLINTBEGIN(bugprone-reserved-identifier): the names that the linker's --wrap gives
pid_t __real_gettid();

pid_t __wrap_gettid()
{
    return toldId != 0 ? toldId : __real_gettid();
}
// NOLINTEND(bugprone-reserved-identifier)
}

TEST_F(ThreadTracerTest, EntryLineIsThreadIdThreadNameAndCall)
{
    const CallMarker marker("A::f");

    EXPECT_EQ(
        m_tracer.folder().read("trace_0.txt"),
        "[th_" + padded(std::to_string(gettid()), 5) + "][test           ]A::f\n");
}

struct IdColumn {
    pid_t id;
    std::string column;
    std::string name; // of a thread that has no other

    friend void PrintTo(const IdColumn& row, std::ostream* out) { *out << row.id; }
};

class ThreadTracerIds : public testing::TestWithParam<IdColumn> {
protected:
    ThreadTracerIds() { toldId = GetParam().id; }
    ~ThreadTracerIds() override { toldId = 0; }
};

TEST_P(ThreadTracerIds, ArePaddedToFiveCharactersAndNeverCut)
{
    PublishedTracer tracer;
    const CallMarker marker("f");
    TAV_TRACE(marker, TraceMsgType::D, "text");
    tracer->PrintStacks();

    EXPECT_EQ(
        tracer.folder().read("trace_0.txt"), GetParam().column + "[test           ]f\n" +
                                                 GetParam().column +
                                                 "[test           ]  >> [D] text\n"
                                                 "\n-------------- CALLSTACK --------------\n" +
                                                 GetParam().column +
                                                 "[test           ]    [1] f\n"
                                                 "---------------------------------------\n");
}

TEST_P(ThreadTracerIds, NameAThreadAsTheFilterKnowsIt)
{
    Tracer tracer;
    tracer.TraceTheThread(GetParam().name.c_str());
    Tracer::SetInstance(&tracer);
    tracer.setActive(true);

    const CallMarker marker("f");

    EXPECT_NE(marker.getThreadTracer(), nullptr);
}

INSTANTIATE_TEST_SUITE_P(
    Lengths, ThreadTracerIds,
    testing::Values(
        IdColumn{7, "[th_7    ]", "th_7"}, IdColumn{9999, "[th_9999 ]", "th_9999"},
        IdColumn{12345, "[th_12345]", "th_12345"}, IdColumn{654321, "[th_654321]", "th_654321"},
        IdColumn{4194304, "[th_4194304]", "th_4194304"}));

TEST_F(ThreadTracerTest, ThreadNameIsNotCut)
{
    m_tracer->EndOfThread();
    m_tracer->BeginningOfThread("sixteen letters.");
    const CallMarker marker("A::f");

    EXPECT_EQ(m_tracer.lines(), "[<id>][sixteen letters.]A::f\n");
}

TEST_F(ThreadTracerTest, TextsAreNoFormats)
{
    m_tracer->EndOfThread();
    m_tracer->BeginningOfThread("100%s");
    const CallMarker marker("operator%d");
    TAV_TRACE(marker, TraceMsgType::D, "%s", "%n");

    EXPECT_EQ(
        m_tracer.lines(), "[<id>][100%s          ]operator%d\n"
                          "[<id>][100%s          ]  >> [D] %n\n");
}

TEST_F(ThreadTracerTest, CallsIndentByTwoBlanks)
{
    const CallMarker outer("outer");
    const CallMarker inner("inner");
    const CallMarker innermost("innermost");

    EXPECT_EQ(
        m_tracer.lines(), "[<id>][test           ]outer\n"
                          "[<id>][test           ]  inner\n"
                          "[<id>][test           ]    innermost\n");
}

TEST_F(ThreadTracerTest, CallsIndentWithMarksInATree)
{
    m_tracer->setTreeIndent(true);
    const CallMarker outer("outer");
    const CallMarker inner("inner");
    const CallMarker innermost("innermost");

    EXPECT_EQ(
        m_tracer.lines(), "[<id>][test           ]outer\n"
                          "[<id>][test           ]| inner\n"
                          "[<id>][test           ]| | innermost\n");
}

TEST_F(ThreadTracerTest, HiddenCallsDoNotIndent)
{
    m_tracer->TraceTheCall("-hidden");
    const CallMarker outer("outer");
    const CallMarker hidden("hidden");
    const CallMarker inner("inner");

    EXPECT_EQ(
        m_tracer.lines(), "[<id>][test           ]outer\n"
                          "[<id>][test           ]  inner\n");
}

TEST_F(ThreadTracerTest, HiddenCallsIndentOnDemand)
{
    m_tracer->setIndentHidden(true);
    m_tracer->TraceTheCall("-hidden");
    const CallMarker outer("outer");
    const CallMarker hidden("hidden");
    const CallMarker inner("inner");

    EXPECT_EQ(
        m_tracer.lines(), "[<id>][test           ]outer\n"
                          "[<id>][test           ]    inner\n");
}

TEST_F(ThreadTracerTest, ACallThatHasEndedIndentsNoMore)
{
    const CallMarker outer("outer");
    {
        const CallMarker first("first");
    }
    const CallMarker second("second");

    EXPECT_EQ(
        m_tracer.lines(), "[<id>][test           ]outer\n"
                          "[<id>][test           ]  first\n"
                          "[<id>][test           ]  second\n");
}

TEST_F(ThreadTracerTest, ExitLineIsOneUnitDeeperThanItsEntryLine)
{
    m_tracer->setPrintExit(true);
    {
        const CallMarker outer("outer");
        const CallMarker inner("inner");
    }

    EXPECT_EQ(
        m_tracer.lines(), "[<id>][test           ]outer\n"
                          "[<id>][test           ]  inner\n"
                          "[<id>][test           ]    <- inner\n"
                          "[<id>][test           ]  <- outer\n");
}

TEST_F(ThreadTracerTest, HiddenCallHasNoExitLine)
{
    m_tracer->setPrintExit(true);
    m_tracer->TraceTheCall("-hidden");
    {
        const CallMarker hidden("hidden");
    }

    EXPECT_EQ(m_tracer.lines(), "");
}

TEST_F(ThreadTracerTest, MessageIsOneUnitDeeperThanItsCall)
{
    const CallMarker outer("outer");
    const CallMarker inner("inner");
    TAV_TRACE(inner, TraceMsgType::W, "%d of %s", 2, "three");

    EXPECT_EQ(
        m_tracer.lines(), "[<id>][test           ]outer\n"
                          "[<id>][test           ]  inner\n"
                          "[<id>][test           ]    >> [W] 2 of three\n");
}

TEST_F(ThreadTracerTest, LongMessageIsCutAndMarked)
{
    const CallMarker marker("f");
    TAV_TRACE(marker, TraceMsgType::D, "%s", std::string(25000, 'x').c_str());

    EXPECT_EQ(
        m_tracer.lines(), "[<id>][test           ]f\n"
                          "[<id>][test           ]  >> [D] " +
                              std::string(19999, 'x') + " ...\n");
}

TEST_F(ThreadTracerTest, EveryKindOfLineBeginsWithTheTimeOnDemand)
{
    m_tracer->setPrintTime(true);
    m_tracer->setPrintExit(true);
    {
        const CallMarker marker("f");
        TAV_TRACE(marker, TraceMsgType::D, "text");
    }

    const std::string stamp = R"(\[[0-9][0-9]:[0-9][0-9]:[0-9][0-9]-[0-9][0-9][0-9]\])";
    const std::string columns = R"(\[<id>\]\[test           \])";
    EXPECT_THAT(
        m_tracer.lines(), testing::MatchesRegex(
                              stamp + columns + "f\n" + stamp + columns + "  >> \\[D\\] text\n" +
                              stamp + columns + "  <- f\n"));
}

TEST_P(ThreadTracerTags, BeginTheMessage)
{
    PublishedTracer tracer;
    const CallMarker marker("f");
    TAV_TRACE(marker, GetParam().type, "text");

    EXPECT_EQ(
        tracer.lines(), "[<id>][test           ]f\n"
                        "[<id>][test           ]  " +
                            GetParam().tag + "text\n");
}

INSTANTIATE_TEST_SUITE_P(
    Types, ThreadTracerTags,
    testing::Values(
        TypeTag{TraceMsgType::D, ">> [D] "}, TypeTag{TraceMsgType::E, ">> [E] "},
        TypeTag{TraceMsgType::W, ">> [W] "}, TypeTag{TraceMsgType::L0, ">> [0] "},
        TypeTag{TraceMsgType::L1, ">> [1] "}, TypeTag{TraceMsgType::L2, ">> [2] "},
        TypeTag{TraceMsgType::L3, ">> [3] "}, TypeTag{TraceMsgType::L4, ">> [4] "},
        TypeTag{TraceMsgType::L5, ">> [5] "}, TypeTag{TraceMsgType{3}, ""}));

TEST(TraceMsgType, HasOneBitPerType)
{
    EXPECT_EQ(static_cast<unsigned>(TraceMsgType::D), 1U);
    EXPECT_EQ(static_cast<unsigned>(TraceMsgType::E), 2U);
    EXPECT_EQ(static_cast<unsigned>(TraceMsgType::W), 4U);
    EXPECT_EQ(static_cast<unsigned>(TraceMsgType::L0), 8U);
    EXPECT_EQ(static_cast<unsigned>(TraceMsgType::L1), 16U);
    EXPECT_EQ(static_cast<unsigned>(TraceMsgType::L2), 32U);
    EXPECT_EQ(static_cast<unsigned>(TraceMsgType::L3), 64U);
    EXPECT_EQ(static_cast<unsigned>(TraceMsgType::L4), 128U);
    EXPECT_EQ(static_cast<unsigned>(TraceMsgType::L5), 256U);
}

TEST_F(ThreadTracerObjects, CallWithoutObjectHasABlankColumn)
{
    const CallMarker marker("f");

    EXPECT_EQ(m_tracer.lines(), "[<id>][test           ][     ][          ]f\n");
}

TEST_F(ThreadTracerObjects, MethodHasTheAddressOfItsObject)
{
    const CallMarker marker("A::f", at(0x1234abcd));

    EXPECT_EQ(m_tracer.lines(), "[<id>][test           ][     ][0x1234abcd]A::f\n");
}

TEST_F(ThreadTracerObjects, ShortAddressIsPadded)
{
    const CallMarker marker("A::f", at(0x1f));

    EXPECT_EQ(m_tracer.lines(), "[<id>][test           ][     ][0x1f      ]A::f\n");
}

TEST_F(ThreadTracerObjects, OfALongAddressTheLowHalfIsShown)
{
    const CallMarker marker("A::f", at(0x7ffd0000beefULL));

    EXPECT_EQ(m_tracer.lines(), "[<id>][test           ][     ][0xbeef    ]A::f\n");
}

TEST_F(ThreadTracerObjects, ConstructorAndDestructorHaveTheCountAndTheAddress)
{
    {
        const CallMarker marker("A", "A::constructor", true, at(0x10));
    }
    {
        const CallMarker marker("A", "A::constructor", true, at(0x20));
    }
    {
        const CallMarker marker("A", "A::destructor", false, at(0x10));
    }

    EXPECT_EQ(
        m_tracer.lines(), "[<id>][test           ][1    ][0x10      ]A::constructor\n"
                          "[<id>][test           ][2    ][0x20      ]A::constructor\n"
                          "[<id>][test           ][1    ][0x10      ]A::destructor\n");
}

TEST_F(ThreadTracerObjects, ExitLineOfAConstructorHasTheAddressAndNotTheCount)
{
    m_tracer->setPrintExit(true);
    {
        const CallMarker marker("A", "A::constructor", true, at(0x10));
    }

    EXPECT_EQ(
        m_tracer.lines(), "[<id>][test           ][1    ][0x10      ]A::constructor\n"
                          "[<id>][test           ][     ][0x10      ]  <- A::constructor\n");
}

TEST_F(ThreadTracerObjects, ExitLineOfAMethodHasTheAddressOfItsObject)
{
    m_tracer->setPrintExit(true);
    {
        const CallMarker marker("A::f", at(0x1234abcd));
    }

    EXPECT_EQ(
        m_tracer.lines(), "[<id>][test           ][     ][0x1234abcd]A::f\n"
                          "[<id>][test           ][     ][0x1234abcd]  <- A::f\n");
}

TEST_F(ThreadTracerObjects, ExitLineWithoutObjectHasABlankColumn)
{
    m_tracer->setPrintExit(true);
    {
        const CallMarker marker("f");
    }

    EXPECT_EQ(
        m_tracer.lines(), "[<id>][test           ][     ][          ]f\n"
                          "[<id>][test           ][     ][          ]  <- f\n");
}

TEST_F(ThreadTracerObjects, MessageHasABlankColumnWhateverItsCall)
{
    const CallMarker marker("A::f", at(0x10));
    TAV_TRACE(marker, TraceMsgType::D, "text");

    EXPECT_EQ(
        m_tracer.lines(), "[<id>][test           ][     ][0x10      ]A::f\n"
                          "[<id>][test           ][     ][          ]  >> [D] text\n");
}

TEST_F(ThreadTracerTest, StackListsTheOpenCallsInnermostFirst)
{
    m_tracer->TraceTheCall("-*hidden*");
    m_tracer->TraceTheCall("-outer");
    const CallMarker outer("outer");
    const CallMarker hidden("hidden");
    const CallMarker inner("hidden inner");

    m_tracer->PrintStacks();

    EXPECT_EQ(
        m_tracer.lines(), "\n-------------- CALLSTACK --------------\n"
                          "[<id>][test           ]    [3] hidden inner\n"
                          "[<id>][test           ]    [2] hidden\n"
                          "[<id>][test           ]    [1] outer\n"
                          "---------------------------------------\n");
}

TEST_F(ThreadTracerTest, StackLinesHaveNeitherTimeNorObjects)
{
    m_tracer->TraceTheCall("-*");
    m_tracer->setPrintTime(true);
    m_tracer->setPrintObjects(true);
    const CallMarker marker("A::f", at(0x10));

    m_tracer->PrintStacks();

    EXPECT_EQ(
        m_tracer.lines(), "\n-------------- CALLSTACK --------------\n"
                          "[<id>][test           ]    [1] A::f\n"
                          "---------------------------------------\n");
}

TEST_F(ThreadTracerTest, EmptyStackIsNotPrinted)
{
    m_tracer->PrintStacks();

    EXPECT_EQ(m_tracer.lines(), "");
}

TEST_F(ThreadTracerTest, StackOfAnotherThreadHasItsNameAndTheIdOfThePrinter)
{
    m_tracer->TraceTheCall("-*");
    const WaitingThread other;

    m_tracer->PrintStacks();

    EXPECT_EQ(m_tracer.lines(), STACK_OF_THE_OTHER);
}

TEST_F(ThreadTracerTest, StacksOfAllThreadsArePrinted)
{
    m_tracer->TraceTheCall("-*");
    const WaitingThread other;
    const CallMarker marker("own");

    m_tracer->PrintStacks();

    const std::string own = "\n-------------- CALLSTACK --------------\n"
                            "[<id>][test           ]    [1] own\n"
                            "---------------------------------------\n";
    EXPECT_THAT(
        m_tracer.lines(), testing::AnyOf(own + STACK_OF_THE_OTHER, STACK_OF_THE_OTHER + own))
        << "in the order of the thread ids";
}
