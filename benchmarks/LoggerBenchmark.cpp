#include "Logger.h"
#include "TemporaryFolder.h"

#include <cstdio>
#include <limits>

#include <benchmark/benchmark.h>

// One log line beside a plain fprintf of the same text: queued and written with a thousand others,
// written at once with its file opened and closed, and not written at all.
namespace {

constexpr int c_linesOfAPass = 1000;

/// A published log that is switched on for one level, with a single ring file.
class PublishedLog {
public:
    PublishedLog()
    {
        Logger::SetInstance(&m_logger);
        m_logger.setMaxLinesPerFile(std::numeric_limits<int>::max());
        m_logger.SetFileName(m_folder.file("log"));
        m_logger.addLevels(static_cast<std::uint32_t>(LoggerMsgType::LEVEL_0));
        m_logger.setActive(true);
    }

    Logger* operator->() { return &m_logger; }

private:
    TemporaryFolder m_folder;
    Logger m_logger;
};

void logQueuedLine(benchmark::State& state)
{
    PublishedLog log;
    int line = 0;
    while (state.KeepRunning()) {
        TAV_LOG(LoggerMsgType::LEVEL_0, "%s %d", "network", ++line);
        if (line % c_linesOfAPass == 0)
            log->WriteOnFile();
    }
}
BENCHMARK(logQueuedLine);

void printBufferedLine(benchmark::State& state)
{
    const TemporaryFolder folder;
    std::FILE* const file = std::fopen(folder.file("log.txt").c_str(), "a");
    int line = 0;
    while (state.KeepRunning()) {
        std::fprintf(file, "[LEVEL_0] %s %d\n", "network", ++line);
        if (line % c_linesOfAPass == 0)
            std::fflush(file);
    }
    std::fclose(file);
}
BENCHMARK(printBufferedLine);

void logLineAtOnce(benchmark::State& state)
{
    PublishedLog log;
    log->setSynchronous(true);
    int line = 0;
    while (state.KeepRunning())
        TAV_LOG(LoggerMsgType::LEVEL_0, "%s %d", "network", ++line);
}
BENCHMARK(logLineAtOnce);

void printLineToReopenedFile(benchmark::State& state)
{
    const TemporaryFolder folder;
    const std::string name = folder.file("log.txt");
    int line = 0;
    while (state.KeepRunning()) {
        std::FILE* const file = std::fopen(name.c_str(), "a");
        std::fprintf(file, "[LEVEL_0] %s %d\n", "network", ++line);
        std::fclose(file);
    }
}
BENCHMARK(printLineToReopenedFile);

void skipLineOfALevelThatIsOff(benchmark::State& state)
{
    const PublishedLog log;
    int line = 0;
    while (state.KeepRunning()) {
        TAV_LOG(LoggerMsgType::DEBUG, "%s %d", "network", ++line);
        benchmark::ClobberMemory();
    }
}
BENCHMARK(skipLineOfALevelThatIsOff);

} // namespace
