// Where the arguments came from: what each token of the three sources became, and which of the values
// given for an option counts.

#ifndef ORVEX_SHOW_ARGUMENTS_TRACE_H
#define ORVEX_SHOW_ARGUMENTS_TRACE_H

#include "known_options.h"

#include <optional>
#include <string>
#include <vector>

enum class TokenRole { ProgramName, DroppedProgramName, TestPath, Flag, Option, Value, OptionWithValue };

struct TracedToken {
    std::string text;
    TokenRole role;
    std::string option;  // the option's name, for the last four roles
};

enum class SourceState { Scanned, NotSet, Blank, Malformed, NotReached };

struct TracedSource {
    std::string name;
    SourceState state = SourceState::NotReached;
    std::string message = {};  // why it is malformed
    std::vector<TracedToken> tokens = {};
};

enum class Outcome { Won, Lost, Collected, Counted, Ignored, NotUsed };

// One occurrence of an option, or of a test path.
struct Given {
    std::string source;
    std::optional<std::string> value;  // none for a flag
    Outcome outcome = Outcome::NotUsed;
    std::string note = {};  // why it is ignored, and what an empty text means
};

struct TracedOption {
    std::string name;
    const KnownOption* known;  // null for an option that the parser does not look at
    std::vector<Given> given;  // in scan order
};

struct Trace {
    std::vector<TracedSource> sources;  // in scan order
    std::vector<TracedOption> options;  // in the order of their first occurrence
    std::vector<Given> testPaths;
};

// Scans what a Parse with these arguments scans, in the same order. Reads the two argument variables.
Trace traceArguments(int argc, char** argv);

// The occurrence whose value counts; null when the option has no value.
const Given* findWinner(const Trace& trace, const std::string& option);

// "value", "dropped program name", ...
const char* describe(TokenRole role);
const char* describe(SourceState state);
const char* describe(Outcome outcome);

// The option as one would type it.
std::string typed(const std::string& option);

#endif
