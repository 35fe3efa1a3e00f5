// What the parts of show_arguments share, in the order in which they use each other.

#ifndef ORVEX_SHOW_ARGUMENTS_H
#define ORVEX_SHOW_ARGUMENTS_H

#include "OrvexTestCommandLineParser.h"

#include <nlohmann/json.hpp>
#include <optional>
#include <vector>

using Json = nlohmann::ordered_json;

enum class OptionKind {
    Flag,         // counts when it is given without a value
    Value,        // keeps the last value given
    Number,       // as Value, but a value that does not begin with a digit ends the parse
    MultiValue,   // keeps every value given
    InlineValue,  // as Value, but only name=value gives it one
    Unread
};

struct KnownOption {
    std::string_view name;
    OptionKind kind;
    // Accessors, fields of the record and variables. For an unread option, the one that works instead.
    std::vector<std::string> sets;
};

// The numbers are in the order in which the parser checks them. The last row, which has no name, stands
// for all options that are not known.
const std::vector<KnownOption>& knownOptions();
const KnownOption& findKnownOption(std::string_view name);

// The option that an unknown name resembles: in another case, misspelt, or with "tdc_" too many or too
// few. Empty when there is none.
std::string_view nearestOption(std::string_view name);

// The option as one would type it.
std::string typed(std::string_view name);

// The text itself; in quotes and escaped when a terminal would not show what it is.
std::string printable(std::string_view text);

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
    std::vector<Json> sources;          // in scan order: name, state, tokens and what became of them
    std::vector<TracedOption> options;  // in the order of their first occurrence
    std::vector<Given> testPaths;
    bool hasProgramName = false;
    std::string failure;  // why the arguments are bad; empty when they are not
};

// Scans what a Parse with these arguments scans, in the same order. Reads the two argument variables.
Trace traceArguments(int argc, char** argv);

// Parses the arguments, and tells what a test program then sees.
Json reportParse(OrvexTestCommandLineParser& parser, int argc, char** argv);

// The same for people.
std::string asText(const Json& report, bool hasColour);

#endif
