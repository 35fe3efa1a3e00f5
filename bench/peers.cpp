// One command line, parsed by this library and by its peers, each from construction to destruction.

#include "command_line.h"
#include "peer.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstddef>
#include <string>

namespace {

void measure(benchmark::State& state, Form form, ParseOnce parseOnce, std::size_t transportLayers) {
    CommandLine commandLine(typicalArguments(form));
    CommandLine permuted(typicalArguments(form));
    Found found;
    for (auto _ : state) {
        // Some parsers move the test paths to the end of the vector.
        std::copy_n(commandLine.argv(), commandLine.argc() + 1, permuted.argv());
        found = parseOnce(permuted.argc(), permuted.argv());
    }
    if (found.transportLayers != transportLayers || found.testPaths != 2 || !found.wait) {
        state.SkipWithError("did not find everything");
    }
}

}  // namespace

bool registerPeer(const char* name, Form form, ParseOnce parseOnce, std::size_t transportLayers) noexcept {
    const std::string benchmarkName = std::string(name) + (form == Form::Joined ? "/joined" : "/separate");
    benchmark::RegisterBenchmark(benchmarkName.c_str(), measure, form, parseOnce, transportLayers);
    return true;
}

bool registerPeer(const char* name, ParseOnce parseOnce, std::size_t transportLayers) noexcept {
    return registerPeer(name, Form::Joined, parseOnce, transportLayers) &&
           registerPeer(name, Form::Separate, parseOnce, transportLayers);
}

BENCHMARK_MAIN();
