#include "AppDataPersistence.h"
#include "BinaryAppDataPersistence.h"
#include "PrivateDataFolders.h"

#include <cstdint>
#include <memory>
#include <string>

#include <benchmark/benchmark.h>
#include <glib.h>

// One parameter of a domain that holds many: each read takes the whole file in, each write replaces
// it whole and waits for the disk. Beside it GLib's key file, which does more (groups, comments,
// escaping) and replaces its file in the same way.
namespace {

constexpr const char* FILE_NAME = "Pelora/scope/domain.dat";
constexpr const char* BINARY_FILE_NAME = "Pelora/scope/domain_binary.dat";

std::string nameOf(std::int64_t parameter)
{
    return "parameter" + std::to_string(parameter);
}

/// The middle one, whichever way the store searches.
std::string someName(const benchmark::State& state)
{
    return nameOf(state.range(0) / 2);
}

std::string textParameters(std::int64_t count)
{
    std::string text;
    for (std::int64_t i = 0; i < count; ++i)
        text += nameOf(i) + "=value " + std::to_string(i) + "\n";
    return text;
}

std::string binaryParameters(std::int64_t count)
{
    std::string bytes;
    for (std::int64_t i = 0; i < count; ++i)
        bytes += t_Param(nameOf(i), "0123456789abcdef", 16).marshall();
    return bytes;
}

/// A domain of the benchmark's own, with its two files.
class Domain {
public:
    explicit Domain(const benchmark::State& state)
    {
        m_folders.user().write(FILE_NAME, textParameters(state.range(0)));
        m_folders.user().write(BINARY_FILE_NAME, binaryParameters(state.range(0)));
    }

    AppDataPersistence& texts() { return m_texts; }
    BinaryAppDataPersistence& bytes() { return m_bytes; }

private:
    PrivateDataFolders m_folders;
    AppDataPersistence m_texts{"scope", "domain", PERSISTENCE_CURRENT_USER};
    BinaryAppDataPersistence m_bytes{"scope", "domain", PERSISTENCE_CURRENT_USER};
};

void readParam(benchmark::State& state)
{
    Domain domain(state);
    const std::string name = someName(state);
    std::string value;
    for (auto _ : state)
        benchmark::DoNotOptimize(domain.texts().readParam(name, value));
    state.SetComplexityN(state.range(0));
}

void writeParam(benchmark::State& state)
{
    Domain domain(state);
    const std::string name = someName(state);
    for (auto _ : state)
        benchmark::DoNotOptimize(domain.texts().writeParam(name, "new value"));
    state.SetComplexityN(state.range(0));
}

void readUnformattedParam(benchmark::State& state)
{
    Domain domain(state);
    const std::string name = someName(state);
    int size = 0;
    for (auto _ : state)
        delete[] domain.bytes().readUnformattedParam(name, size);
    state.SetComplexityN(state.range(0));
}

void writeUnformattedParam(benchmark::State& state)
{
    Domain domain(state);
    const std::string name = someName(state);
    for (auto _ : state)
        benchmark::DoNotOptimize(domain.bytes().writeUnformattedParam(name, "new", 3));
    state.SetComplexityN(state.range(0));
}

using KeyFile = std::unique_ptr<GKeyFile, decltype(&g_key_file_free)>;

KeyFile loadKeyFile(const std::string& path)
{
    KeyFile file(g_key_file_new(), &g_key_file_free);
    g_key_file_load_from_file(file.get(), path.c_str(), G_KEY_FILE_NONE, nullptr);
    return file;
}

void readGKeyFile(benchmark::State& state)
{
    const TemporaryFolder folder;
    const std::string path = folder.write("file", "[domain]\n" + textParameters(state.range(0)));
    const std::string name = someName(state);
    for (auto _ : state)
        g_free(g_key_file_get_string(loadKeyFile(path).get(), "domain", name.c_str(), nullptr));
    state.SetComplexityN(state.range(0));
}

void writeGKeyFile(benchmark::State& state)
{
    const TemporaryFolder folder;
    const std::string path = folder.write("file", "[domain]\n" + textParameters(state.range(0)));
    const std::string name = someName(state);
    for (auto _ : state) {
        const KeyFile file = loadKeyFile(path);
        g_key_file_set_string(file.get(), "domain", name.c_str(), "new value");
        g_key_file_save_to_file(file.get(), path.c_str(), nullptr);
    }
    state.SetComplexityN(state.range(0));
}

void parameterCounts(benchmark::internal::Benchmark* benchmark)
{
    benchmark->Arg(100)->Arg(1000)->Arg(10000)->Arg(100000);
    benchmark->Unit(benchmark::kMillisecond)->UseRealTime()->Complexity();
}

BENCHMARK(readParam)->Apply(parameterCounts);
BENCHMARK(readGKeyFile)->Apply(parameterCounts);
BENCHMARK(writeParam)->Apply(parameterCounts);
BENCHMARK(writeGKeyFile)->Apply(parameterCounts);
BENCHMARK(readUnformattedParam)->Apply(parameterCounts);
BENCHMARK(writeUnformattedParam)->Apply(parameterCounts);

} // namespace
