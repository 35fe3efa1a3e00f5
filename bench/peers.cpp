// One command line, parsed by this library and by its peers.

#include "command_line.h"
#include "environment_calls.h"
#include "peer.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstddef>
#include <string>

namespace {

enum class Job { BareParse, Same };

void measure(benchmark::State& state, Form form, Job job, ParseOnce parseOnce, std::size_t transportLayers) {
    CommandLine commandLine(typicalArguments(form));
    CommandLine permuted(typicalArguments(form));
    const EnvironmentCalls environmentCalls(form);
    Found found;
    for (auto _ : state) {
        // Some parsers move the test paths to the end of the vector.
        std::copy_n(commandLine.argv(), commandLine.argc() + 1, permuted.argv());
        found = parseOnce(permuted.argc(), permuted.argv());
        if (job == Job::Same) {
            environmentCalls.make();
        }
    }
    if (found.transportLayers != transportLayers || found.testPaths != 2 || !found.wait) {
        state.SkipWithError("did not find everything");
    }
}

std::string benchmarkName(const char* parser, Form form, const char* job) {
    return std::string(parser) + (form == Form::NameEqualsValue ? "/--name=value/" : "/--name value/") + job;
}

}  // namespace

bool registerPeer(const char* name, Form form, ParseOnce parseOnce, std::size_t transportLayers) noexcept {
    benchmark::RegisterBenchmark(benchmarkName(name, form, "parse").c_str(), measure, form, Job::BareParse,
                                 parseOnce, transportLayers);
    benchmark::RegisterBenchmark(benchmarkName(name, form, "job").c_str(), measure, form, Job::Same,
                                 parseOnce, transportLayers);
    return true;
}

bool registerPeer(const char* name, ParseOnce parseOnce, std::size_t transportLayers) noexcept {
    return registerPeer(name, Form::NameEqualsValue, parseOnce, transportLayers) &&
           registerPeer(name, Form::NameValue, parseOnce, transportLayers);
}

bool registerLibrary(ParseOnce parseOnce) noexcept {
    for (const Form form : {Form::NameEqualsValue, Form::NameValue}) {
        benchmark::RegisterBenchmark(benchmarkName("library", form, "job").c_str(), measure, form,
                                     Job::BareParse, parseOnce, std::size_t{2});
    }
    return true;
}

BENCHMARK_MAIN();
