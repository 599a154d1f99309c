#pragma once

#include "PublishedTracer.h"

#include <cstdint>
#include <cstdio>
#include <memory>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

/// The calls and messages of a trace without object columns, with their indentation; of a message,
/// its first line.
inline std::vector<std::string> linesIn(const std::string& trace)
{
    constexpr std::string_view s_columns = "[<id>][test           ]";
    std::vector<std::string> lines;
    std::stringstream in(trace);
    for (std::string line; std::getline(in, line);) {
        if (line.starts_with("[<id>]"))
            lines.push_back(line.substr(s_columns.size()));
    }
    return lines;
}

/// The calls of a trace without object columns, with their indentation; messages are left out.
inline std::vector<std::string> callsIn(const std::string& trace)
{
    std::vector<std::string> calls = linesIn(trace);
    std::erase_if(
        calls, [](const std::string& line) { return line.find(">> [") != std::string::npos; });
    return calls;
}

/// The entry line of a call on the outermost level, object column included; null for the call of a
/// free function.
inline std::string entryLine(
    const std::string& text, const void* object, const std::string& count = "     ")
{
    char address[16] = "          ";
    if (object != nullptr)
        std::snprintf(
            address, sizeof(address), "0x%-8x",
            static_cast<unsigned>(reinterpret_cast<std::uintptr_t>(object)));
    return "[<id>][test           ][" + count + "][" + address + "]" + text + "\n";
}

/// Expects the call to be marked, before everything else, with the text and the object; null for a
/// free function.
template<typename Call>
void expectMarked(const std::string& text, const void* object, const Call& call)
{
    PublishedTracer tracer;
    tracer->setPrintObjects(true);

    call();

    EXPECT_THAT(tracer.lines(), testing::StartsWith(entryLine(text, object)));
}

/// Expects the object that make() yields, in a smart pointer, to be marked and counted as one of
/// the class by its constructor, and to be counted no more by its destructor.
template<typename Make>
void expectCounted(const std::string& className, const Make& make)
{
    PublishedTracer tracer;
    tracer->setPrintObjects(true);

    auto made = make();
    const std::string constructed = entryLine(className + "::constructor", made.get(), "1    ");
    const std::string destroyed = entryLine(className + "::destructor", made.get(), "0    ");
    const std::string linesOfLife = tracer.lines();
    made.reset();

    EXPECT_THAT(linesOfLife, testing::HasSubstr(constructed));
    EXPECT_THAT(linesOfLife, testing::Not(testing::HasSubstr(destroyed)));
    EXPECT_THAT(tracer.lines(), testing::HasSubstr(destroyed));
}

/// Expects an exception with these arguments, and a copy of it, to be counted as expectCounted()
/// does.
template<typename Exception, typename... Arguments>
void expectExceptionCounted(const std::string& className, const Arguments&... arguments)
{
    expectCounted(className, [&] { return std::make_unique<Exception>(arguments...); });

    const Exception exception(arguments...);
    expectCounted(className, [&] { return std::make_unique<Exception>(exception); });
}

/// One call of a method of an object of the class, and the text of its marker.
template<typename Object>
struct MarkedCall {
    const char* text;
    void (*run)(Object&);

    friend void PrintTo(const MarkedCall& call, std::ostream* out) { *out << call.text; }
};
