// What every parser of the comparison is made into: one benchmark for each form of the command line.

#ifndef ORVEX_BENCH_PEER_H
#define ORVEX_BENCH_PEER_H

#include "command_line.h"

#include <cstddef>
#include <iterator>
#include <string>
#include <vector>

// How much of the command line a parser has found.
struct Found {
    std::size_t transportLayers = 0;
    std::size_t testPaths = 0;
    bool wait = false;
};

// What a parser that stores into variables is given.
struct Variables {
    std::string values[std::size(valueOptions)];  // in the order of valueOptions
    std::vector<std::string> transportLayers;
    std::vector<std::string> properties;
    std::vector<std::string> testPaths;
    bool wait = false;

    Found found() const {
        return {transportLayers.size(), testPaths.size(), wait};
    }
};

// Parses the command line once, its own construction and destruction included.
using ParseOnce = Found (*)(int argc, char** argv);

// Registers the benchmarks of a parser: for each form, or for the only one that it knows. Called while
// the program starts, so that CMake alone decides which peers take part.
// transportLayers: how many of the two -tl the parser is able to keep. Before it is measured, it has to
// find them and all the rest, since a parser that stops early would look fast.
bool registerPeer(const char* name, ParseOnce parseOnce, std::size_t transportLayers = 2) noexcept;
bool registerPeer(const char* name, Form form, ParseOnce parseOnce, std::size_t transportLayers = 2) noexcept;

// The bare parse with getopt_long, which is part of the floor as well.
Found parseWithGetoptLong(int argc, char** argv);

#endif
