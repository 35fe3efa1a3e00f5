// Measures parses of growing inputs. Time per element should stay (nearly) constant, and peak memory
// proportional to the input.

#include "command_line.h"
#include "peak_memory.h"

#include "OrvexTestCommandLineParser.h"
#include "environment/expand_environment_references.h"

#include <benchmark/benchmark.h>

#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

extern char** environ;

namespace {

constexpr int decade = 10;

void parse(benchmark::State& state, CommandLine& commandLine, int times = 1) {
    OrvexTestCommandLineParser parser;
    for (int i = 0; i < times; ++i) {
        if (!parser.Parse(commandLine.argc(), commandLine.argv())) {
            state.SkipWithError("the parse failed");
        }
    }
}

// Runs the work once to measure its peak memory. This also warms up the allocator for the timed rounds.
template <typename Work>
void measure(benchmark::State& state, std::size_t inputBytes, Work work) {
    startCountingMemory();
    work();
    state.counters["peak_bytes"] = static_cast<double>(stopCountingMemory());
    for (auto _ : state) {
        work();
    }
    state.SetComplexityN(state.range(0));
    state.counters["input_bytes"] = static_cast<double>(inputBytes);
}

// Parses a growing number of arguments of one kind with one object, `times` times; each later parse adds all
// earlier test paths again. argument: "#" is replaced by the argument's number.
void parseArguments(benchmark::State& state, const char* argument, int times) {
    std::vector<std::string> list = {"/opt/tests/runner"};
    std::size_t inputBytes = 0;
    for (std::int64_t i = 0; i < state.range(0); ++i) {
        list.emplace_back(argument);
        const std::size_t number = list.back().find('#');
        if (number != std::string::npos) {
            list.back().replace(number, 1, std::to_string(i));
        }
        inputBytes += list.back().size() + 1 + sizeof(char*);
    }
    CommandLine commandLine(std::move(list));
    measure(state, inputBytes, [&] { parse(state, commandLine, times); });
}

std::string repeat(std::string_view pattern, std::int64_t size) {
    std::string text;
    text.reserve(static_cast<std::size_t>(size));
    while (static_cast<std::int64_t>(text.size()) < size) {
        text += pattern;
    }
    text.resize(static_cast<std::size_t>(size));
    return text;
}

// An argument variable of a growing number of bytes, all of one class.
void parseArgumentVariable(benchmark::State& state, const char* pattern, const char* around) {
    const std::string text = around + repeat(pattern, state.range(0)) + around;
    setenv("ORVEX_TEST_ARGS", text.c_str(), 1);
    CommandLine commandLine({"/opt/tests/runner"});
    measure(state, text.size(), [&] { parse(state, commandLine); });
    unsetenv("ORVEX_TEST_ARGS");
}

// A string with a growing number of references, or of unterminated ones.
void expandReferences(benchmark::State& state, const char* pattern) {
    const std::string_view one = pattern;
    const std::string text = repeat(one, state.range(0) * static_cast<std::int64_t>(one.size())) + "end";
    measure(state, text.size(), [&] {
        std::string expanded = text;
        benchmark::DoNotOptimize(orvex::expandEnvironmentReferences(expanded));
    });
}

// Does what clearenv does; not every platform has clearenv.
void clearEnvironment() {
    while (environ != nullptr && *environ != nullptr) {
        const std::string_view variable = *environ;
        unsetenv(std::string(variable.substr(0, variable.find('='))).c_str());
    }
}

// getenv and setenv search all variables linearly.
void parseInEnvironment(benchmark::State& state) {
    clearEnvironment();
    std::size_t inputBytes = 0;
    for (std::int64_t i = 0; i < state.range(0); ++i) {
        const std::string name = "VARIABLE_" + std::to_string(i);
        setenv(name.c_str(), "value", 1);
        inputBytes += name.size() + sizeof("=value") + sizeof(char*);
    }
    CommandLine commandLine(typicalArguments(Form::NameEqualsValue));
    measure(state, inputBytes, [&] { parse(state, commandLine); });
}

using Range = std::pair<std::int64_t, std::int64_t>;
constexpr Range toMillion = {1, 1000000};
constexpr Range toHundredThousand = {1, 100000};
constexpr Range toTenThousand = {1, 10000};
constexpr Range kibibyteToMebibytes = {1 << 10, 64 << 20};

// Registers a benchmark over the range, in steps of ten unless a step is given.
template <typename... Arguments>
void grow(const char* name, Range range, int step, Arguments... arguments) {
    benchmark::RegisterBenchmark(name, arguments...)
        ->RangeMultiplier(step)
        ->Range(range.first, range.second)
        ->Unit(benchmark::kMicrosecond)
        ->Complexity(benchmark::oN);
}

void registerBenchmarks() {
    grow("arguments/test paths", toMillion, decade, parseArguments, "Suite#", 1);
    grow("arguments/one flag", toMillion, decade, parseArguments, "-w", 1);
    grow("arguments/other flags", toMillion, decade, parseArguments, "-f#", 1);
    grow("arguments/one value", toMillion, decade, parseArguments, "-o=report", 1);
    grow("arguments/other values", toMillion, decade, parseArguments, "-v#=1", 1);
    grow("arguments/numbers", toMillion, decade, parseArguments, "-#", 1);
    grow("tl/one class", toHundredThousand, decade, parseArguments, "-tl=DravikGigE:SocketDriver", 1);
    grow("tl/other classes", toHundredThousand, decade, parseArguments, "-tl=Class#", 1);
    grow("p/values", toHundredThousand, decade, parseArguments, "-p=name#=1", 1);
    grow("arguments/test paths, twice", toMillion, decade, parseArguments, "TestSuiteUsb", 2);

    constexpr int step = 16;
    grow("variable/one token", kibibyteToMebibytes, step, parseArgumentVariable, "x", "");
    grow("variable/tokens", kibibyteToMebibytes, step, parseArgumentVariable, "Suite1 ", "");
    grow("variable/spaces", kibibyteToMebibytes, step, parseArgumentVariable, " ", "");
    grow("variable/quoted text", kibibyteToMebibytes, step, parseArgumentVariable, "x", "'");
    grow("variable/quotes", kibibyteToMebibytes, step, parseArgumentVariable, "''", "");
    grow("variable/other quotes", kibibyteToMebibytes, step, parseArgumentVariable, "\"", "'");
    grow("variable/backslashes", kibibyteToMebibytes, step, parseArgumentVariable, "\\", "");
    grow("variable/high bytes", kibibyteToMebibytes, step, parseArgumentVariable, "\xff", "");
    grow("expansion/$(NAME)", toMillion, decade, expandReferences, "$(NAME)");
    grow("expansion/%NAME%", toMillion, decade, expandReferences, "%NAME%");
    grow("expansion/$( without end", toMillion, decade, expandReferences, "$(");
    grow("expansion/$( and %% without end", toMillion, decade, expandReferences, "$(%%");
    grow("expansion/$()", toMillion, decade, expandReferences, "$()");
    grow("expansion/%%", toMillion, decade, expandReferences, "%%");
    grow("expansion/$$", toMillion, decade, expandReferences, "$$");
    grow("environment", toTenThousand, decade, parseInEnvironment);
}

}  // namespace

int main(int argc, char** argv) {
    registerBenchmarks();
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
        return 1;
    }
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
