#include "Tracer.h"

#include "BlockedViolations.h"
#include "CallMarker.h"
#include "CrashReport.h"
#include "JoinedOutputs.h"
#include "PublishedTracer.h"

#include <string>
#include <thread>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

const std::string inTracer = " - In File : Infrastructure/ProgrammingServices/Tracer/src/Tracer";

class TracerTest : public testing::Test {
protected:
    void construct(const char* className, const char* methodName)
    {
        const CallMarker marker(className, methodName, true, this);
    }
    void destroy(const char* className, const char* methodName)
    {
        const CallMarker marker(className, methodName, false, this);
    }

    PublishedTracer m_tracer;
};

/// A tracer whose mutex the test may release.
class UnlockableTracer : public Tracer {
public:
    using Tracer::m_mutex;
};

/// A tracer that nobody published.
class UnpublishedTracer : public testing::Test {
protected:
    UnlockableTracer m_tracer;
};

using TracerDeathTest = UnpublishedTracer;

void call(const char* methodName)
{
    const CallMarker marker(methodName);
}

void setNoInstanceWithBlockedViolations()
{
    const BlockedViolations blocked;
    Tracer::SetInstance(nullptr);
}

} // namespace

TEST_F(UnpublishedTracer, StartsWithTheDefaultOptions)
{
    EXPECT_FALSE(m_tracer.isActive());
    EXPECT_FALSE(m_tracer.getTreeIndent());
    EXPECT_FALSE(m_tracer.getIndentHidden());
    EXPECT_FALSE(m_tracer.getPrintExit());
    EXPECT_FALSE(m_tracer.getPrintTime());
    EXPECT_FALSE(m_tracer.getPrintObjects());
    EXPECT_FALSE(m_tracer.isSynchronous());
    EXPECT_EQ(m_tracer.getMaxFiles(), 10);
    EXPECT_EQ(m_tracer.getMaxLinesPerFile(), 100000);
    EXPECT_EQ(m_tracer.getMsgTypeMask(), 0U);
    EXPECT_EQ(m_tracer.getCurrentFileName(), "");
}

TEST_F(UnpublishedTracer, IsNotTheInstance)
{
    EXPECT_EQ(Tracer::GetInstance(), nullptr);
}

TEST_F(UnpublishedTracer, IsTheInstanceOnceSet)
{
    Tracer::SetInstance(&m_tracer);

    EXPECT_EQ(Tracer::GetInstance(), &m_tracer);
}

TEST_F(UnpublishedTracer, TracesWhenItIsPublishedAfterItBecameActive)
{
    m_tracer.setActive(true);
    EXPECT_FALSE(CallMarker::isTracing());

    Tracer::SetInstance(&m_tracer);

    EXPECT_TRUE(CallMarker::isTracing());
}

TEST_F(UnpublishedTracer, TracesWhenItBecomesActiveAfterItWasPublished)
{
    Tracer::SetInstance(&m_tracer);
    EXPECT_FALSE(CallMarker::isTracing());

    m_tracer.setActive(true);

    EXPECT_TRUE(CallMarker::isTracing());
}

TEST_F(UnpublishedTracer, TracesNoMoreOnceAnInactiveOneReplacesIt)
{
    m_tracer.setActive(true);
    Tracer::SetInstance(&m_tracer);
    Tracer other;

    Tracer::SetInstance(&other);

    EXPECT_FALSE(CallMarker::isTracing());
}

TEST(Tracer, IsNoMoreTheInstanceOnceDestroyed)
{
    {
        Tracer tracer;
        tracer.setActive(true);
        Tracer::SetInstance(&tracer);
    }

    EXPECT_EQ(Tracer::GetInstance(), nullptr);
    EXPECT_FALSE(CallMarker::isTracing());
}

TEST_F(TracerDeathTest, NoInstanceIsAViolation)
{
    EXPECT_CRASH_REPORT(
        Tracer::SetInstance(nullptr),
        "REQUIRE VIOLATION : pTheTracer != NULL" + inTracer + " - At Line : <line>");
}

TEST_F(TracerDeathTest, NoInstanceWithNoneBeforeIsASecondViolation)
{
    EXPECT_CRASH_REPORT(
        setNoInstanceWithBlockedViolations(),
        "ENSURE VIOLATION : m_Instance != NULL" + inTracer + " - At Line : <line>");
}

TEST_F(TracerDeathTest, NoInstanceWithOneBeforeKeepsIt)
{
    EXPECT_CRASH_REPORT(
        {
            Tracer::SetInstance(&m_tracer);
            setNoInstanceWithBlockedViolations();
        },
        "REQUIRE VIOLATION : pTheTracer != NULL" + inTracer + " - At Line : <line>");
}

TEST_F(TracerDeathTest, NoThreadNameIsAViolation)
{
    EXPECT_CRASH_REPORT(
        m_tracer.BeginningOfThread(nullptr),
        "REQUIRE VIOLATION : threadName != NULL" + inTracer + " - At Line : <line>");
}

TEST_F(TracerDeathTest, NoThreadPatternIsAViolation)
{
    EXPECT_CRASH_REPORT(
        m_tracer.TraceTheThread(nullptr),
        "REQUIRE VIOLATION : threadName != NULL" + inTracer + " - At Line : <line>");
}

TEST_F(TracerDeathTest, EmptyThreadPatternIsAViolation)
{
    EXPECT_CRASH_REPORT(
        m_tracer.TraceTheThread(""),
        "REQUIRE VIOLATION : !strThreadName.empty()" + inTracer + " - At Line : <line>");
}

TEST_F(TracerDeathTest, NoCallPatternIsAViolation)
{
    EXPECT_CRASH_REPORT(
        m_tracer.TraceTheCall(nullptr),
        "REQUIRE VIOLATION : className != NULL" + inTracer + " - At Line : <line>");
}

TEST_F(TracerDeathTest, EmptyCallPatternIsAViolation)
{
    EXPECT_CRASH_REPORT(
        m_tracer.TraceTheCall(""),
        "REQUIRE VIOLATION : !strClassName.empty()" + inTracer + " - At Line : <line>");
}

TEST_F(TracerDeathTest, InitializingWithoutFileNameEndsTheProcess)
{
    EXPECT_EXIT(
        {
            joinOutputs();
            m_tracer.Initialize();
        },
        testing::ExitedWithCode(1),
        testing::Eq("please call TRACE_SET_FILE_NAME(\"baseFileName\")\n"));
}

TEST_F(TracerTest, ThreadIsRegisteredAtItsFirstCallUnderItsId)
{
    m_tracer->EndOfThread();

    call("f");

    const std::string name = "th_" + std::to_string(gettid());
    EXPECT_EQ(m_tracer.lines(), "[<id>][" + name + std::string(15 - name.size(), ' ') + "]f\n");
}

TEST_F(TracerTest, RegisteredThreadKeepsItsName)
{
    m_tracer->BeginningOfThread("other");

    call("f");

    EXPECT_EQ(m_tracer.lines(), "[<id>][test           ]f\n");
}

TEST_F(TracerTest, ThreadIsRegisteredAnewAfterItsEnd)
{
    m_tracer->EndOfThread();
    m_tracer->BeginningOfThread("anew");

    call("f");

    EXPECT_EQ(m_tracer.lines(), "[<id>][anew           ]f\n");
}

TEST_F(TracerTest, ThreadThatTheListDoesNotPermitWritesNothing)
{
    Tracer tracer;
    tracer.setSynchronous(true);
    tracer.SetFileName(m_tracer.folder().file("other"));
    tracer.TraceTheCall("*");
    tracer.TraceTheThread("Main");
    tracer.setMsgTypeMask(0x1FF);
    Tracer::SetInstance(&tracer);
    tracer.setActive(true);

    const CallMarker marker("A", "A::constructor", true, this);
    TAV_TRACE(marker, TraceMsgType::E, "text");
    tracer.PrintStacks();
    tracer.PrintAllObjectsCount();

    EXPECT_EQ(marker.getThreadTracer(), nullptr);
    EXPECT_EQ(m_tracer.folder().read("other_0.txt"), "");
}

TEST_F(UnpublishedTracer, EmptyListsPermitNothing)
{
    EXPECT_FALSE(m_tracer.isThreadPermittedToPrint("Main"));
    EXPECT_FALSE(m_tracer.isCallPermittedToPrint("f"));
    EXPECT_FALSE(m_tracer.isCallForbiddenToPrint("f"));
}

TEST_F(UnpublishedTracer, PermitsThreadsThatMatchAPattern)
{
    m_tracer.TraceTheThread("Main");
    m_tracer.TraceTheThread("th_*");

    EXPECT_TRUE(m_tracer.isThreadPermittedToPrint("Main"));
    EXPECT_TRUE(m_tracer.isThreadPermittedToPrint("th_12"));
    EXPECT_FALSE(m_tracer.isThreadPermittedToPrint("other"));
}

TEST_F(UnpublishedTracer, TakesAMinusOfAThreadPatternLiterally)
{
    m_tracer.TraceTheThread("-Main");

    EXPECT_TRUE(m_tracer.isThreadPermittedToPrint("-Main"));
    EXPECT_FALSE(m_tracer.isThreadPermittedToPrint("Main"));
}

TEST_F(UnpublishedTracer, PermitsCallsThatMatchAPattern)
{
    m_tracer.TraceTheCall("Dictionary*");
    m_tracer.TraceTheCall("*::constructor");

    EXPECT_TRUE(m_tracer.isCallPermittedToPrint("Dictionary::getItem"));
    EXPECT_TRUE(m_tracer.isCallPermittedToPrint("Item::constructor"));
    EXPECT_FALSE(m_tracer.isCallPermittedToPrint("Item::getName"));
    EXPECT_FALSE(m_tracer.isCallForbiddenToPrint("Dictionary::getItem"));
}

TEST_F(UnpublishedTracer, ForbidsCallsThatMatchAPatternBehindAMinus)
{
    m_tracer.TraceTheCall("-Dictionary*");

    EXPECT_TRUE(m_tracer.isCallForbiddenToPrint("Dictionary::getItem"));
    EXPECT_FALSE(m_tracer.isCallForbiddenToPrint("Item::getName"));
    EXPECT_FALSE(m_tracer.isCallForbiddenToPrint("-Dictionary::getItem"));
    EXPECT_FALSE(m_tracer.isCallPermittedToPrint("Dictionary::getItem"));
    EXPECT_FALSE(m_tracer.isCallPermittedToPrint("-Dictionary::getItem"));
}

TEST_F(TracerTest, ForbiddenCallIsHiddenThoughPermitted)
{
    m_tracer->TraceTheCall("-Dictionary*");

    call("Dictionary::getItem");
    call("Item::getName");

    EXPECT_EQ(m_tracer.lines(), "[<id>][test           ]Item::getName\n");
}

TEST_F(TracerTest, CallWithoutAPermittingPatternIsHidden)
{
    Tracer tracer;
    tracer.setSynchronous(true);
    tracer.SetFileName(m_tracer.folder().file("other"));
    tracer.TraceTheThread("*");
    Tracer::SetInstance(&tracer);
    tracer.setActive(true);

    const CallMarker marker("f");

    EXPECT_FALSE(marker.isPrinted());
    EXPECT_NE(marker.getThreadTracer(), nullptr);
    EXPECT_EQ(m_tracer.folder().read("other_0.txt"), "");
}

TEST_F(TracerTest, DisabledThreadWritesNoLinesAndCountsNoObjects)
{
    m_tracer->setPrintExit(true);
    m_tracer->Disable();

    construct("A", "A::constructor");
    m_tracer->PrintAllObjectsCount();

    EXPECT_EQ(
        m_tracer.lines(), "\n-------------- OBJECT(S) COUNT --------------\n"
                          "---------------------------------------------\n");
}

TEST_F(TracerTest, EnabledThreadWritesLinesAgain)
{
    m_tracer->Disable();
    call("hidden");
    m_tracer->Enable();
    call("shown");

    EXPECT_EQ(m_tracer.lines(), "[<id>][test           ]shown\n");
}

TEST_F(TracerTest, CallThatIsOpenWhenItsThreadIsDisabledEndsWithoutALine)
{
    m_tracer->setPrintExit(true);
    {
        const CallMarker marker("outer");
        m_tracer->Disable();
    }
    m_tracer->Enable();
    m_tracer->PrintStacks();

    EXPECT_EQ(m_tracer.lines(), "[<id>][test           ]outer\n");
}

TEST_F(TracerTest, CallThatWasPrintedStillTakesMessagesWhileItsThreadIsDisabled)
{
    m_tracer->setPrintExit(true);
    {
        const CallMarker marker("outer");
        m_tracer->Disable();
        TAV_TRACE(marker, TraceMsgType::D, "still %s", "written");
        call("hidden");
        m_tracer->Enable();
    }

    EXPECT_EQ(
        m_tracer.lines(), "[<id>][test           ]outer\n"
                          "[<id>][test           ]  >> [D] still written\n"
                          "[<id>][test           ]  <- outer\n");
}

TEST_F(TracerTest, DisablingConcernsTheCallingThreadAlone)
{
    std::thread([this] {
        m_tracer->BeginningOfThread("other");
        m_tracer->Disable();
        call("hidden");
    }).join();
    call("shown");

    EXPECT_EQ(m_tracer.lines(), "[<id>][test           ]shown\n");
}

TEST_F(TracerTest, EnablingAThreadThatIsNotRegisteredRegistersNothing)
{
    m_tracer->EndOfThread();

    m_tracer->Disable();
    m_tracer->Enable();
    m_tracer->PrintAllObjectsCount();

    EXPECT_EQ(m_tracer.lines(), "");
}

TEST_F(TracerTest, CountsLiveObjectsPerClassInNameOrder)
{
    m_tracer->TraceTheCall("-*");
    construct("Item", "Item::constructor");
    construct("Dictionary", "Dictionary::constructor");
    construct("Item", "Item::constructor");
    destroy("Item", "Item::destructor");
    destroy("A class with a name of more than thirty letters", "::destructor");
    call("f");

    m_tracer->PrintAllObjectsCount();

    EXPECT_EQ(
        m_tracer.lines(),
        "\n-------------- OBJECT(S) COUNT --------------\n"
        "Class = A class with a name of more than thirty letters, count = -000001\n"
        "Class = Dictionary                    , count = 000001\n"
        "Class = Item                          , count = 000001\n"
        "---------------------------------------------\n");
}

TEST_F(TracerTest, ReturnsTheCountOfTheClass)
{
    m_tracer->TraceTheCall("-*");
    construct("A", "A::constructor");
    const CallMarker constructor("A", "A::constructor", true, this);
    const CallMarker destructor("B", "B::destructor", false, this);
    const CallMarker method("A::f", this);

    EXPECT_EQ(m_tracer->UpdateObjectCount(constructor), 3);
    EXPECT_EQ(m_tracer->UpdateObjectCount(destructor), -2);
    EXPECT_EQ(m_tracer->UpdateObjectCount(method), 0);
}

TEST_F(TracerTest, HiddenCallIsCountedAndPushed)
{
    m_tracer->TraceTheCall("-*");
    const CallMarker marker("A", "A::constructor", true, this);

    m_tracer->PrintStacks();
    m_tracer->PrintAllObjectsCount();

    EXPECT_EQ(
        m_tracer.lines(), "\n-------------- CALLSTACK --------------\n"
                          "[<id>][test           ]    [1] A::constructor\n"
                          "---------------------------------------\n"
                          "\n-------------- OBJECT(S) COUNT --------------\n"
                          "Class = A                             , count = 000001\n"
                          "---------------------------------------------\n");
}

TEST_F(TracerTest, ObjectsAreNotReportedByAThreadThatIsNotRegistered)
{
    construct("A", "A::constructor");
    const std::string before = m_tracer.lines();

    std::thread([this] { m_tracer->PrintAllObjectsCount(); }).join();

    EXPECT_EQ(m_tracer.lines(), before);
}

TEST_F(TracerTest, FinishingSwitchesTracingOffAndWritesWhatIsPending)
{
    m_tracer->setSynchronous(false);
    call("pending");

    m_tracer->FinishTracing();
    call("hidden");

    EXPECT_FALSE(m_tracer->isActive());
    EXPECT_FALSE(CallMarker::isTracing());
    EXPECT_EQ(m_tracer.lines(), "[<id>][test           ]pending\n");
}

TEST_F(TracerTest, FinishingWritesNothingWhenSynchronous)
{
    m_tracer->setSynchronous(false);
    call("pending");
    m_tracer->setSynchronous(true);

    m_tracer->FinishTracing();

    EXPECT_FALSE(m_tracer->areAllMsgFlushed());
}

TEST_F(UnpublishedTracer, TellsOfAFileThatCannotBeOpened)
{
    const TemporaryFolder folder;
    m_tracer.SetFileName(folder.file("missing/trace"));
    m_tracer.PrintString("waiting\n");

    testing::internal::CaptureStderr();
    m_tracer.WriteOnFile();

    EXPECT_EQ(
        testing::internal::GetCapturedStderr(),
        "Tracer : can't open " + folder.file("missing/trace_0.txt") + "\n");
    EXPECT_FALSE(m_tracer.areAllMsgFlushed());
    m_tracer.m_mutex.release();
}

TEST_F(UnpublishedTracer, WritesCallsToTheConsoleFollowedByAnEmptyLine)
{
    m_tracer.SetFileName("console");
    m_tracer.TraceTheThread("*");
    m_tracer.TraceTheCall("*");
    m_tracer.BeginningOfThread("test");
    Tracer::SetInstance(&m_tracer);
    m_tracer.setActive(true);

    testing::internal::CaptureStdout();
    call("f");

    EXPECT_THAT(
        testing::internal::GetCapturedStdout(),
        testing::MatchesRegex("\\[th_[0-9]+ *\\]\\[test           \\]f\n\n"));
}
