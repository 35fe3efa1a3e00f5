// Compares a parse with -tl DravikGTC, the only one that calls the dynamic loader and the file system, with
// those two calls alone.

#include "command_line.h"

#include "OrvexTestCommandLineParser.h"

#include <benchmark/benchmark.h>
#include <dlfcn.h>

#include <cstdlib>
#include <string>

namespace {

constexpr const char* searchPath = "GENICAM_GENTL64_PATH";

// Every parse puts its directories in front of the old value, which would grow from one to the next.
void resetSearchPath() {
    setenv(searchPath, "/opt/producers", 1);
}

void lookUpAndResolve(benchmark::State& state) {
    // Finds the library's own file in the same way as a parse does.
    const void* address = reinterpret_cast<const void*>(&OrvexTestCommandLineParser::getApplicationDir);
    for (auto _ : state) {
        resetSearchPath();
        Dl_info library;
        if (dladdr(address, &library) == 0) {
            state.SkipWithError("dladdr failed");
            break;
        }
        std::string path = library.dli_fname;
        path.replace(path.rfind('/'), std::string::npos, "/../../../..");
        char* resolved = realpath(path.c_str(), nullptr);
        benchmark::DoNotOptimize(resolved);
        std::free(resolved);
    }
}

void parse(benchmark::State& state, const char* transportLayer) {
    CommandLine commandLine({"/opt/tests/runner", "-tl", transportLayer});
    for (auto _ : state) {
        resetSearchPath();
        OrvexTestCommandLineParser parser;
        if (!parser.Parse(commandLine.argc(), commandLine.argv())) {
            state.SkipWithError("the parse failed");
            break;
        }
    }
    const std::string value = std::getenv(searchPath);
    if ((value == "/opt/producers") == (std::string(transportLayer) == "DravikGTC")) {
        state.SkipWithError("the search path is not what it should be");
    }
}

}  // namespace

BENCHMARK(lookUpAndResolve)->Name("dladdr and realpath");
BENCHMARK_CAPTURE(parse, producers, "DravikGTC")->Name("parse -tl DravikGTC");
BENCHMARK_CAPTURE(parse, none, "DravikUsb")->Name("parse -tl DravikUsb");

BENCHMARK_MAIN();
