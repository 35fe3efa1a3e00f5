#include "command_line.h"
#include "peer.h"

#include <benchmark/benchmark.h>
#include <getopt.h>

#include <cstddef>
#include <iterator>

namespace {

constexpr int transportLayer = 256;
constexpr int firstValue = 257;

// The options as getopt_long's table; valueOptions[i] gives the result firstValue + i.
struct LongOptions {
    option table[std::size(valueOptions) + 2] = {};

    constexpr LongOptions() {
        int result = firstValue;
        option* next = table;
        for (const char* name : valueOptions) {
            *next++ = {name, required_argument, nullptr, result++};
        }
        *next = {"tl", required_argument, nullptr, transportLayer};
    }
};

constexpr LongOptions longOptions;

Found parse(int argc, char** argv) {
    const char* values[std::size(valueOptions)] = {};
    const char* transportLayers[argumentCount] = {};
    const char* properties[argumentCount] = {};
    int propertyCount = 0;
    Found found;

    optind = 0;  // makes getopt_long start again
    for (int result = 0; (result = getopt_long(argc, argv, "o:p:wx:", longOptions.table, nullptr)) != -1;) {
        if (result == transportLayer) {
            transportLayers[found.transportLayers++] = optarg;
        } else if (result == 'p') {
            properties[propertyCount++] = optarg;
        } else if (result == 'w') {
            found.wait = true;
        } else if (result == 'o') {
            values[0] = optarg;
        } else if (result == 'x') {
            values[1] = optarg;
        } else {
            values[result - firstValue] = optarg;
        }
    }
    benchmark::DoNotOptimize(values);
    benchmark::DoNotOptimize(transportLayers);
    benchmark::DoNotOptimize(properties);
    found.testPaths = static_cast<std::size_t>(argc - optind);
    return found;
}

[[maybe_unused]] const bool isRegistered = registerPeer("getopt_long", parse);

}  // namespace
