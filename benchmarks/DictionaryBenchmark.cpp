#include "Dictionary.h"

#include <cstdint>
#include <map>
#include <memory>
#include <sstream>
#include <string>

#include <benchmark/benchmark.h>
#include <libxml/parser.h>
#include <libxml/tree.h>

// The tree of a configuration file with a number of company networks: its reading and writing
// beside libxml2, which does more (a true parser, with escaping), and its lookup by path beside one
// flat std::map, which does less (no tree).
namespace {

std::string keyOf(std::int64_t network)
{
    return "Company" + std::to_string(network);
}

Dictionary networks(std::int64_t count)
{
    Dictionary tree;
    for (std::int64_t i = 1; i <= count; ++i) {
        const std::string key = keyOf(i);
        tree.addValue(key + ".Name", "Intranet " + std::to_string(i));
        tree.addValue(key + ".Monitoring.Activated", "true");
        tree.addValue(key + ".Monitoring.Type", "IP");
        tree.addValue(key + ".Monitoring.Address", "10.0.0.1");
        tree.addValue(key + ".PublicVPN.Activated", "true");
        tree.addValue(key + ".PublicVPN.StartCommandLine", "/usr/bin/vpn");
        tree.addValue(key + ".PublicVPN.StartArguments", "start --network intranet");
        tree.addValue(key + ".PublicVPN.StopCommandLine", "/usr/bin/vpn");
        tree.addValue(key + ".PublicVPN.StopArguments", "stop");
    }
    return tree;
}

void countBytes(benchmark::State& state, const std::string& text)
{
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
}

using XmlDocument = std::unique_ptr<xmlDoc, decltype(&xmlFreeDoc)>;

XmlDocument parseXml(const std::string& text)
{
    return {
        xmlReadMemory(text.data(), static_cast<int>(text.size()), nullptr, "UTF-8", 0),
        &xmlFreeDoc};
}

void readDictionary(benchmark::State& state)
{
    const std::string text = networks(state.range(0)).marshall("");
    for ([[maybe_unused]] auto _ : state) {
        std::stringstream in(text);
        Dictionary tree;
        tree.unMarshall(in);
        benchmark::DoNotOptimize(tree.getFirstItem());
    }
    countBytes(state, text);
}

void readLibxml2(benchmark::State& state)
{
    const std::string text = networks(state.range(0)).marshall("");
    for ([[maybe_unused]] auto _ : state)
        benchmark::DoNotOptimize(parseXml(text).get());
    countBytes(state, text);
}

void writeDictionary(benchmark::State& state)
{
    Dictionary tree = networks(state.range(0));
    for ([[maybe_unused]] auto _ : state)
        benchmark::DoNotOptimize(tree.marshall("").size());
    countBytes(state, tree.marshall(""));
}

void writeLibxml2(benchmark::State& state)
{
    const std::string text = networks(state.range(0)).marshall("");
    const XmlDocument document = parseXml(text);
    for ([[maybe_unused]] auto _ : state) {
        xmlChar* written = nullptr;
        int size = 0;
        xmlDocDumpMemory(document.get(), &written, &size);
        benchmark::DoNotOptimize(size);
        xmlFree(written);
    }
    countBytes(state, text);
}

void lookUpInDictionary(benchmark::State& state)
{
    const Dictionary tree = networks(state.range(0));
    const std::string path = keyOf(state.range(0) / 2 + 1) + ".PublicVPN.StopArguments";
    for ([[maybe_unused]] auto _ : state)
        benchmark::DoNotOptimize(tree.getValue(path));
}

void lookUpInMap(benchmark::State& state)
{
    std::map<std::string, std::string> map;
    for (std::int64_t i = 1; i <= state.range(0); ++i) {
        for (const char* const leaf : {".Name", ".PublicVPN.Activated", ".PublicVPN.StopArguments"})
            map[keyOf(i) + leaf] = "stop";
    }
    const std::string path = keyOf(state.range(0) / 2 + 1) + ".PublicVPN.StopArguments";
    for ([[maybe_unused]] auto _ : state)
        benchmark::DoNotOptimize(map.find(path)->second.c_str());
}

void copyDictionary(benchmark::State& state)
{
    const Dictionary tree = networks(state.range(0));
    for ([[maybe_unused]] auto _ : state) {
        const Dictionary copy(tree);
        benchmark::DoNotOptimize(&copy);
    }
}

void freeNestedDictionaries(benchmark::State& state)
{
    std::string path = "d";
    for (std::int64_t i = 1; i < state.range(0); ++i)
        path += ".d";
    for ([[maybe_unused]] auto _ : state) {
        state.PauseTiming();
        auto tree = std::make_unique<Dictionary>();
        tree->addValue(path, "x");
        state.ResumeTiming();
        tree.reset();
    }
}

BENCHMARK(readDictionary)->Arg(1)->Arg(100)->Arg(10000);
BENCHMARK(readLibxml2)->Arg(1)->Arg(100)->Arg(10000);
BENCHMARK(writeDictionary)->Arg(1)->Arg(100)->Arg(10000);
BENCHMARK(writeLibxml2)->Arg(1)->Arg(100)->Arg(10000);
BENCHMARK(lookUpInDictionary)->Arg(1)->Arg(100)->Arg(10000);
BENCHMARK(lookUpInMap)->Arg(1)->Arg(100)->Arg(10000);
BENCHMARK(copyDictionary)->Arg(1)->Arg(100)->Arg(10000);
BENCHMARK(freeNestedDictionaries)->Arg(1000)->Arg(1000000);

} // namespace
