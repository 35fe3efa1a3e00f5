// What show_arguments prints: what a parse yields, and where it came from.

#ifndef ORVEX_SHOW_ARGUMENTS_REPORT_H
#define ORVEX_SHOW_ARGUMENTS_REPORT_H

#include "OrvexTestCommandLineParser.h"
#include "options.h"

#include <nlohmann/json.hpp>
#include <optional>

using Json = nlohmann::ordered_json;

// One occurrence of an option, or a test path.
struct Given {
    std::string source;
    std::optional<std::string> value;  // none for a flag
    std::string outcome;               // won, lost, refused, collected, counted, ignored, not used
    std::string note;                  // why
};

struct TracedOption {
    std::string name;
    const KnownOption& known;
    std::vector<Given> given;  // in scan order
};

// Where the arguments came from.
struct Trace {
    Json sources;                       // in scan order: name, state, tokens and what became of them
    std::vector<TracedOption> options;  // in the order of their first occurrence
    std::vector<Given> testPaths;
    std::string failure;  // why the arguments are bad; empty when they are not
};

// Scans what a Parse with these arguments scans, in the same order. Reads the two argument variables.
Trace traceArguments(int argc, char** argv);

// Parses the arguments, and tells what a test program then sees.
Json reportParse(OrvexTestCommandLineParser& parser, int argc, char** argv);

// The same for people.
std::string asText(const Json& report, bool hasColour);

#endif
