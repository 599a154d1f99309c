#include "TraceStream.h"

#include "CallMarker.h"
#include "PublishedTracer.h"

#include <gtest/gtest.h>

TEST(TraceStream, WritesItsTextInsideTheCallWhenItEnds)
{
    PublishedTracer tracer;
    CallMarker marker("f");

    {
        TraceStream stream(TraceMsgType::W, marker);
        stream << "key " << 7 << " is " << true;
        EXPECT_EQ(tracer.lines(), "[<id>][test           ]f\n");
    }

    EXPECT_EQ(
        tracer.lines(), "[<id>][test           ]f\n"
                        "[<id>][test           ]  >> [W] key 7 is 1\n");
}

TEST(TraceStream, TakesPercentSignsAsText)
{
    PublishedTracer tracer;
    CallMarker marker("f");

    TraceStream(TraceMsgType::D, marker) << "100%s %n";

    EXPECT_EQ(
        tracer.lines(), "[<id>][test           ]f\n"
                        "[<id>][test           ]  >> [D] 100%s %n\n");
}

TEST(TraceStream, WritesNothingOfATypeThatIsNotInTheMask)
{
    PublishedTracer tracer;
    tracer->setMsgTypeMask(2);
    CallMarker marker("f");

    TraceStream(TraceMsgType::D, marker) << "text";

    EXPECT_EQ(tracer.lines(), "[<id>][test           ]f\n");
}

TEST(TraceStream, WritesNothingInACallThatWasNotPrinted)
{
    PublishedTracer tracer;
    tracer->TraceTheCall("-f");
    CallMarker marker("f");

    TraceStream(TraceMsgType::D, marker) << "text";

    EXPECT_EQ(tracer.lines(), "");
}

TEST(TraceStream, WritesNothingWithoutATracer)
{
    ASSERT_EQ(Tracer::GetInstance(), nullptr);
    CallMarker marker("f");

    TraceStream(TraceMsgType::D, marker) << "text";

    EXPECT_EQ(marker.getThreadTracer(), nullptr);
}
