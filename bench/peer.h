// Registers the benchmarks of each parser in the comparison.

#ifndef ORVEX_BENCH_PEER_H
#define ORVEX_BENCH_PEER_H

#include "command_line.h"

#include <cstddef>
#include <iterator>
#include <string>
#include <vector>

// How much of the command line a parser found.
struct Found {
    std::size_t transportLayers = 0;
    std::size_t testPaths = 0;
    bool wait = false;
};

// For parsers that store into variables.
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

// Parses the command line once, including construction and destruction of the parser.
using ParseOnce = Found (*)(int argc, char** argv);

// Registers the benchmarks of a parser, for each form of the command line, or for the only one that the
// parser supports: the bare parse, and the same job as the library's, which is the parse followed by the
// library's calls to getenv and setenv. Called during static initialisation, so that CMake alone decides
// which peers take part.
// transportLayers: how many of the two -tl the parser can keep. The benchmark fails unless the parser finds
// them and everything else, since a parser that stops early would look fast.
bool registerPeer(const char* name, ParseOnce parseOnce, std::size_t transportLayers = 2) noexcept;
bool registerPeer(const char* name, Form form, ParseOnce parseOnce, std::size_t transportLayers = 2) noexcept;

// Registers the library, whose parse is the whole job.
bool registerLibrary(ParseOnce parseOnce) noexcept;

#endif
