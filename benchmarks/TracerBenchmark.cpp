#include "CallMarker.h"
#include "Tracer.h"

#include <cstdio>
#include <filesystem>
#include <string>

#include <benchmark/benchmark.h>
#include <unistd.h>

namespace {

[[gnu::noinline]] void emptyFunction()
{
    benchmark::ClobberMemory();
}

[[gnu::noinline]] void markedFunction()
{
    const CallMarker marker("TracerBenchmark::markedFunction");
    benchmark::ClobberMemory();
}

/// The folder of the benchmark's files, removed with them.
class Folder {
public:
    Folder() { std::filesystem::create_directories(m_path); }
    ~Folder() { std::filesystem::remove_all(m_path); }

    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;

    std::string file(const char* name) const { return m_path / name; }

private:
    std::filesystem::path m_path =
        std::filesystem::temp_directory_path() / ("tav-benchmark-" + std::to_string(getpid()));
};

void callOfAnEmptyFunction(benchmark::State& state)
{
    for (auto iteration : state)
        emptyFunction();
}
BENCHMARK(callOfAnEmptyFunction);

void markerWithoutTracing(benchmark::State& state)
{
    for (auto iteration : state)
        markedFunction();
}
BENCHMARK(markerWithoutTracing);

/// What the peer below writes: one entry line, queued, and written to the file in passes.
void lineOfAnEnabledTrace(benchmark::State& state)
{
    const Folder folder;
    Tracer tracer;
    tracer.TraceTheThread("*");
    tracer.TraceTheCall("*");
    tracer.setMaxLinesPerFile(1000000000);
    tracer.SetFileName(folder.file("trace"));
    tracer.BeginningOfThread("Main");
    Tracer::SetInstance(&tracer);
    tracer.setActive(true);

    int pending = 0;
    for (auto iteration : state) {
        markedFunction();
        if (++pending % 1000 == 0)
            tracer.WriteOnFile();
    }
    tracer.FinishTracing();
}
BENCHMARK(lineOfAnEnabledTrace);

void plainFprintfOfTheSameLine(benchmark::State& state)
{
    const Folder folder;
    std::FILE* const file = std::fopen(folder.file("plain.txt").c_str(), "w");
    for (auto iteration : state)
        std::fprintf(
            file, "[th_%-5d][%-15s]%s\n", gettid(), "Main", "TracerBenchmark::markedFunction");
    std::fclose(file);
}
BENCHMARK(plainFprintfOfTheSameLine);

} // namespace
