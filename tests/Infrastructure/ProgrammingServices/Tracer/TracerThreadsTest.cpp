#include "CallMarker.h"
#include "PublishedTracer.h"
#include "TracerParser.h"

#include <algorithm>
#include <atomic>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

namespace {

constexpr int c_threads = 64;
constexpr int c_calls = 50;

void inner(int number)
{
    const CallMarker marker("inner");
    TAV_TRACE(marker, TraceMsgType::D, "number %d", number);
}

void outer(const std::atomic<bool>& object)
{
    for (int number = 0; number < c_calls; ++number) {
        const CallMarker marker("Outer", "Outer::constructor", true, &object);
        inner(number);
    }
}

std::ptrdiff_t count(const std::string& text, const std::string& line)
{
    std::ptrdiff_t found = 0;
    for (std::size_t at = text.find(line); at != std::string::npos; at = text.find(line, at + 1))
        ++found;
    return found;
}

} // namespace

TEST(TracerThreads, EveryThreadTracesItsOwnCallsWhileOthersChangeTheOptionsAndPrintStacks)
{
    PublishedTracer tracer;
    tracer->setSynchronous(false);
    std::atomic<bool> finished = false;
    std::vector<std::thread> threads;

    for (int number = 0; number < c_threads; ++number)
        threads.emplace_back([&tracer, &finished, number] {
            const std::string name = "worker " + std::to_string(number);
            tracer->BeginningOfThread(name.c_str());
            outer(finished);
            tracer->EndOfThread();
        });
    std::thread observer([&tracer, &finished] {
        while (!finished) {
            tracer->PrintStacks();
            tracer->setPrintTime(!tracer->getPrintTime());
            tracer->setMsgTypeMask(0x1FF);
            tracer->TraceTheCall("*");
            tracer->WriteOnFile();
        }
    });
    std::for_each(threads.begin(), threads.end(), [](std::thread& thread) { thread.join(); });
    finished = true;
    observer.join();
    tracer->PrintAllObjectsCount();
    tracer->FinishTracing();

    const std::string lines = tracer.lines();
    EXPECT_EQ(count(lines, "]Outer::constructor\n"), c_threads * c_calls);
    EXPECT_EQ(count(lines, "]  inner\n"), c_threads * c_calls);
    EXPECT_EQ(count(lines, "]    >> [D] number 7\n"), c_threads);
    EXPECT_EQ(count(lines, "][worker 63      ]Outer::constructor\n"), c_calls);
    EXPECT_EQ(count(lines, "Class = Outer                         , count = 003200\n"), 1);
}

TEST(TracerThreads, TracingIsSwitchedWhileAConfigurationFileIsParsed)
{
    constexpr int turns = 1000;
    Tracer tracer;
    Tracer::SetInstance(&tracer);

    std::thread switching([&tracer] {
        for (int turn = 0; turn < turns; ++turn)
            tracer.setActive(turn % 2 == 0);
    });
    for (int turn = 0; turn < turns; ++turn) {
        TracerScanner scanner("TRACE_SET_MSG_FILTER TRACE_ERROR\nTRACE_CALL_EXIT\n");
        ASSERT_TRUE(TracerParser(scanner).parse());
    }
    switching.join();
    TracerScanner scanner("TRACE_ON\nTRACE_SET_MAX_FILES 7\n");
    ASSERT_TRUE(TracerParser(scanner).parse());

    EXPECT_TRUE(tracer.isActive());
    EXPECT_EQ(tracer.getMaxFiles(), 7);
}

TEST(TracerThreads, TracingIsSwitchedWhileThreadsOpenMarkers)
{
    PublishedTracer tracer;
    std::atomic<bool> finished = false;
    std::vector<std::thread> threads;

    for (int number = 0; number < c_threads; ++number)
        threads.emplace_back([&finished] { outer(finished); });
    for (int turn = 0; turn < 1000; ++turn)
        tracer->setActive(turn % 2 == 0);
    std::for_each(threads.begin(), threads.end(), [](std::thread& thread) { thread.join(); });
    tracer->setActive(true);
    const std::string before = tracer.lines();
    tracer->PrintStacks();

    EXPECT_EQ(tracer.lines(), before);
}
