#include "CallMarker.h"

#include "PublishedTracer.h"

#include <cstdint>
#include <ostream>
#include <string>
#include <type_traits>

#include <gtest/gtest.h>

namespace {

int counted(int& calls)
{
    return ++calls;
}

bool contains(const std::string& text, const std::string& part)
{
    return text.find(part) != std::string::npos;
}

/// What of a tracer and its marker decides whether a message is written.
struct Guard {
    bool active = true;
    bool printed = true;
    std::uint32_t mask = 0x1FF;
    bool written = true;

    friend void PrintTo(const Guard& row, std::ostream* out)
    {
        *out << (row.active ? "active" : "inactive") << ", " << (row.printed ? "printed" : "hidden")
             << ", mask " << row.mask;
    }
};

class CallMarkerGuard : public testing::TestWithParam<Guard> {};

} // namespace

static_assert(!std::is_copy_constructible_v<CallMarker>);

TEST(CallMarker, RecordsNothingWithoutATracer)
{
    ASSERT_EQ(Tracer::GetInstance(), nullptr);

    const CallMarker marker("A", "A::constructor", true, &marker);

    EXPECT_FALSE(CallMarker::isTracing());
    EXPECT_EQ(marker.getThreadTracer(), nullptr);
    EXPECT_STREQ(marker.getClassName(), "");
    EXPECT_STREQ(marker.getMethodName(), "");
    EXPECT_FALSE(marker.isPrinted());
    EXPECT_FALSE(marker.traces(TraceMsgType::E));
}

TEST(CallMarker, RecordsNothingWhileTheTracerIsInactive)
{
    PublishedTracer tracer;
    tracer->setActive(false);

    const CallMarker marker("A", "A::constructor", true, &marker);

    EXPECT_FALSE(CallMarker::isTracing());
    EXPECT_EQ(marker.getThreadTracer(), nullptr);
    EXPECT_STREQ(marker.getMethodName(), "");
    EXPECT_EQ(tracer.lines(), "");
}

TEST(CallMarker, RegistersNoThreadWhileTheTracerIsInactive)
{
    PublishedTracer tracer;
    tracer->EndOfThread();
    tracer->setActive(false);

    {
        const CallMarker marker("hidden");
    }
    tracer->setActive(true);
    tracer->PrintAllObjectsCount();

    EXPECT_EQ(tracer.lines(), "");
}

TEST(CallMarker, TracesOnlyThePublishedTracer)
{
    PublishedTracer tracer;
    Tracer other;

    other.setActive(false);
    EXPECT_TRUE(CallMarker::isTracing());
    tracer->setActive(false);
    other.setActive(true);

    EXPECT_FALSE(CallMarker::isTracing());
}

TEST(CallMarker, KeepsWhatItIsGiven)
{
    PublishedTracer tracer;
    const int object = 0;

    const CallMarker function("function");
    const CallMarker method("A::method", &object);
    const CallMarker constructor("A", "A::constructor", true, &object);
    const CallMarker destructor("A", "A::destructor", false, &object);

    EXPECT_STREQ(function.getMethodName(), "function");
    EXPECT_STREQ(function.getClassName(), "");
    EXPECT_EQ(function.getObject(), nullptr);
    EXPECT_STREQ(method.getMethodName(), "A::method");
    EXPECT_STREQ(method.getClassName(), "");
    EXPECT_EQ(method.getObject(), &object);
    EXPECT_STREQ(constructor.getMethodName(), "A::constructor");
    EXPECT_STREQ(constructor.getClassName(), "A");
    EXPECT_TRUE(constructor.isConstructor());
    EXPECT_EQ(constructor.getObject(), &object);
    EXPECT_STREQ(destructor.getMethodName(), "A::destructor");
    EXPECT_FALSE(destructor.isConstructor());
}

TEST(CallMarker, LeavesTheStackWithoutALineWhenTracingEndedMeanwhile)
{
    PublishedTracer tracer;
    tracer->setPrintExit(true);

    {
        const CallMarker marker("outer");
        tracer->setActive(false);
    }
    tracer->setActive(true);
    tracer->PrintStacks();

    EXPECT_EQ(tracer.lines(), "[<id>][test           ]outer\n");
}

TEST(CallMarker, IsForgottenWhenItsThreadEndsBeforeIt)
{
    PublishedTracer tracer;
    tracer->setPrintExit(true);

    {
        const CallMarker marker("outer");
        tracer->EndOfThread();
        EXPECT_EQ(marker.getThreadTracer(), nullptr);
        EXPECT_FALSE(marker.traces(TraceMsgType::E));
    }

    EXPECT_EQ(tracer.lines(), "[<id>][test           ]outer\n");
}

TEST_P(CallMarkerGuard, WritesAMessageOnlyWhenAllConditionsHold)
{
    PublishedTracer tracer;
    tracer->setMsgTypeMask(GetParam().mask);
    if (!GetParam().printed)
        tracer->TraceTheCall("-function");
    const CallMarker marker("function");
    tracer->setActive(GetParam().active);
    int evaluations = 0;

    TAV_TRACE(marker, TraceMsgType::E, "message %d", counted(evaluations));

    EXPECT_EQ(marker.traces(TraceMsgType::E), GetParam().written);
    EXPECT_EQ(contains(tracer.lines(), ">> [E] message 1\n"), GetParam().written);
    EXPECT_EQ(evaluations, GetParam().written ? 1 : 0);
}

INSTANTIATE_TEST_SUITE_P(
    Conditions, CallMarkerGuard,
    testing::Values(
        Guard{}, Guard{.mask = 2}, Guard{.active = false, .written = false},
        Guard{.printed = false, .written = false}, Guard{.mask = 0, .written = false},
        Guard{.mask = 0x1FF & ~2U, .written = false}));
