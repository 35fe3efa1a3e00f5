// Where the arguments came from: what each token of the three sources became, and which of the values
// given for an option counts.

#ifndef ORVEX_SHOW_ARGUMENTS_TRACE_H
#define ORVEX_SHOW_ARGUMENTS_TRACE_H

#include "options.h"

#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <vector>

using Json = nlohmann::ordered_json;

// One occurrence of an option, or a test path.
struct Given {
    std::string source;
    std::optional<std::string> value;  // none for a flag
    std::string outcome;               // won, lost, refused, collected, counted, ignored, not used
    std::string note;                  // why
};
void to_json(Json& json, const Given& given);

struct TracedOption {
    std::string name;
    const KnownOption& known;
    std::vector<Given> given;  // in scan order

    // The value that counts, or all of them joined by commas; empty when there is none.
    std::string text() const;
};

struct Trace {
    Json sources;                       // in scan order: name, state, tokens and what became of them
    std::vector<TracedOption> options;  // in the order of their first occurrence
    std::vector<Given> testPaths;
    std::string failure;  // why the arguments are bad; empty when they are not
};

// Scans what a Parse with these arguments scans, in the same order. Reads the two argument variables.
Trace traceArguments(int argc, char** argv);

#endif
